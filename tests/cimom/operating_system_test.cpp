#include "HostTree.hpp"
#include "OW_CIMDateTime.hpp"
#include "StorageTree.hpp"
#include "providers/Providers.hpp"

#include <cstring>
#include <ctime>
#include <gtest/gtest.h>
#include <utmp.h>

using namespace cimom;
using namespace OpenWBEM;

namespace {

CIMInstance osOf(const HostTree& tree) {
    return onlyInstance(providerOf("QAV_OperatingSystem", tree.host()));
}

std::string loginRecord(short type) {
    std::string record(384, '\0');
    std::memcpy(&record[0], &type, sizeof type);
    return record;
}

std::string utcNow() {
    const std::time_t now = std::time(nullptr);
    char text[32];
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    return std::string(text, std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &utc));
}

} // namespace

TEST(OperatingSystem, PropertiesComeKeysFirst) {
    HostTree tree;
    tree.write("/proc/sys/kernel/hostname", "box\n");
    const CIMInstance os = osOf(tree);
    EXPECT_EQ("CreationClassName Name", names(os.getKeyValuePairs()));
    EXPECT_EQ("CreationClassName Name LastBootUpTime LocalDateTime _INIT_LOAD_DEVICE "
              "_INIT_LOAD_PARAMETERS NumberOfUsers NumberOfProcesses "
              "MaxNumberOfProcesses",
              names(os.getProperties()));
    EXPECT_EQ("QAV_OperatingSystem", text(os, "CreationClassName"));
    EXPECT_EQ("box", text(os, "Name"));
}

TEST(OperatingSystem, DataThatTheHostDoesNotReportIsNull) {
    HostTree tree;
    const CIMInstance os = osOf(tree);
    for (const char* const property :
         {"Name", "LastBootUpTime", "NumberOfUsers", "NumberOfProcesses", "MaxNumberOfProcesses"})
        EXPECT_EQ("(null)", text(os, property)) << property;
}

TEST(OperatingSystem, BootTimeIsLocalTime) {
    const TimeZone zone("TST+03:15");
    HostTree tree;
    tree.write("/proc/stat", "cpu  1 2 3\nctxt 9\nbtime 1700000000\nprocesses 7\n");
    EXPECT_EQ("20231114185820.000000-195", text(osOf(tree), "LastBootUpTime"));
}

TEST(OperatingSystem, ABootTimeThatIsNotANumberIsNull) {
    HostTree tree;
    tree.write("/proc/stat", "btime soon\n");
    EXPECT_EQ("(null)", text(osOf(tree), "LastBootUpTime"));
}

TEST(OperatingSystem, LocalDateTimeIsNow) {
    const TimeZone zone("UTC0");
    HostTree tree;
    const std::string before = utcNow();
    const std::string served = text(osOf(tree), "LocalDateTime");
    const std::string after = utcNow();
    EXPECT_LE(before, served.substr(0, 14));
    EXPECT_LE(served.substr(0, 14), after);
    EXPECT_EQ("+000", served.substr(21));
}

TEST(OperatingSystem, UsersAreTheLoginSessions) {
    HostTree tree;
    tree.write("/run/utmp", loginRecord(BOOT_TIME) + loginRecord(USER_PROCESS) + loginRecord(DEAD_PROCESS) +
                                loginRecord(USER_PROCESS) + loginRecord(LOGIN_PROCESS));
    EXPECT_EQ("2", text(osOf(tree), "NumberOfUsers"));
}

TEST(OperatingSystem, AnIncompleteRecordIsNotCounted) {
    HostTree tree;
    tree.write("/run/utmp", loginRecord(USER_PROCESS) + loginRecord(USER_PROCESS).substr(0, 383));
    EXPECT_EQ("1", text(osOf(tree), "NumberOfUsers"));
}

TEST(OperatingSystem, AnEmptyLoginFileMeansNoUsers) {
    HostTree tree;
    tree.write("/var/run/utmp", "");
    EXPECT_EQ("0", text(osOf(tree), "NumberOfUsers"));
}

TEST(OperatingSystem, ProcessesAreTheDirectoriesNamedByANumber) {
    HostTree tree;
    for (const char* const name : {"1/stat", "42/stat", "4194304/stat", "self/stat", "12a/stat", "-3/stat"})
        tree.write(std::string("/proc/") + name, "");
    tree.write("/proc/sys/kernel/pid_max", "4194304\n");
    EXPECT_EQ("3", text(osOf(tree), "NumberOfProcesses"));
    EXPECT_EQ("4194304", text(osOf(tree), "MaxNumberOfProcesses"));
}

TEST(OperatingSystem, IsLoadedFromTheDiskOfTheFileSystemThatBoots) {
    StorageTree tree;
    tree.writeDisk("sda", "8:0", "1000");
    tree.writeDisk("sdb", "8:16", "1000");
    tree.writePartition("sdb", "sdb2", "8:18", "2", "100");
    EXPECT_EQ("(null)", text(osOf(tree), "_INIT_LOAD_DEVICE"));
    tree.writeMounts(
        {{27, 1, "8:0", "/", "ext4", "/dev/sda"}, {28, 27, "8:18", "/boot", "ext4", "/dev/sdb2"}});
    const CIMInstance disk =
        instanceWhere(providerOf("QAV_MediaAccessDevice", tree.host()), "DeviceID", "sdb");
    EXPECT_EQ(text(disk, "_HR_DEVICE_INDEX"), text(osOf(tree), "_INIT_LOAD_DEVICE"));
    tree.writeMounts({{27, 1, "0:30", "/", "overlay", "overlay"}});
    EXPECT_EQ("(null)", text(osOf(tree), "_INIT_LOAD_DEVICE"));
}

TEST(OperatingSystem, ItsParametersAreTheCommandLineOfTheKernel) {
    HostTree tree;
    EXPECT_EQ("(null)", text(osOf(tree), "_INIT_LOAD_PARAMETERS"));
    tree.write("/proc/cmdline", "root=/dev/sda quiet\n");
    EXPECT_EQ("root=/dev/sda quiet", text(osOf(tree), "_INIT_LOAD_PARAMETERS"));
}
