// One process: the files it needs, and the fields of each mode.
#include "inventory/Inventory.hpp"
#include "support/Descriptors.hpp"

#include <cstring>
#include <filesystem>
#include <set>
#include <unistd.h>

using namespace std::string_literals;

namespace {

class OneProcess : public Inventory {};

FakeProcess example() {
    FakeProcess process;
    process.name = "daemon";
    process.state = "R";
    process.parent = "42";
    process.userTime = "250";
    process.systemTime = "50";
    process.cmdline = "daemon\0-a\0"s;
    process.exe = "/usr/sbin/daemon";
    return process;
}

TEST_F(OneProcess, IsDescribedInOneMode) {
    m_tree.add("7", example());
    const Record record = read("7", information);
    EXPECT_EQ("7", record.handle);
    EXPECT_EQ("daemon", record.name);
    EXPECT_EQ("/usr/sbin/daemon", record.modulePath);
    EXPECT_EQ(Texts{"-a"}, record.parameters);
    EXPECT_EQ(4, record.runType);
    EXPECT_EQ(3, record.executionState);
    EXPECT_EQ("42", record.parentProcessID);
    EXPECT_EQ(1000U, record.realUserID);
    EXPECT_EQ(100U, record.processGroupID);
    EXPECT_EQ("00000000000000.000000:000", record.totalCpuTime);
    EXPECT_EQ(0U, record.realText);
    EXPECT_EQ(0U, record.realData);
    EXPECT_EQ(0U, record.realStack);
}

// Expects the fields of example() in the mode eStatisticalInformation.
void expectStatistics(const Record& record) {
    EXPECT_EQ("7", record.handle);
    EXPECT_EQ("daemon", record.name);
    EXPECT_EQ("", record.modulePath);
    EXPECT_EQ(Texts{}, record.parameters);
    EXPECT_EQ(0, record.runType);
    EXPECT_EQ(0, record.executionState);
    EXPECT_EQ("", record.parentProcessID);
    EXPECT_EQ(0U, record.realUserID);
    EXPECT_EQ(0U, record.processGroupID);
    EXPECT_EQ("00000000000003.000000:000", record.totalCpuTime);
    EXPECT_EQ(1600U, record.realText);
    EXPECT_EQ(300U, record.realData);
    EXPECT_EQ(132U, record.realStack);
}

TEST_F(OneProcess, IsMeasuredInTheOtherMode) {
    m_tree.add("7", example());
    expectStatistics(read("7", statistics));
}

TEST_F(OneProcess, IsMeasuredInAnInvalidMode) {
    m_tree.add("7", example());
    for (const int type : {2, 3, -1, 256, 257, 0x7fffffff}) {
        // A cast of an invalid value is undefined; memcpy is not.
        QAV_UnixProcessAPI::tProcessInfoType mode = statistics;
        static_assert(sizeof mode == sizeof type, "");
        std::memcpy(&mode, &type, sizeof mode);
        expectStatistics(read("7", mode));
    }
}

TEST_F(OneProcess, MayBeAKernelThread) {
    m_tree.add("9", kernelThread("kworker/0:1H-kblockd"));
    const Record described = read("9", information);
    EXPECT_EQ("kworker/0:1H-kblockd", described.name);
    EXPECT_EQ("", described.modulePath);
    EXPECT_EQ(Texts{}, described.parameters);
    const Record measured = read("9", statistics);
    EXPECT_EQ(0U, measured.realText);
    EXPECT_EQ(0U, measured.realData);
    EXPECT_EQ(0U, measured.realStack);
}

TEST_F(OneProcess, NeedsAStatFile) {
    m_tree.add("7");
    m_tree.remove("7", "stat");
    EXPECT_FALSE(isFound("7", information));
    EXPECT_FALSE(isFound("7", statistics));
}

TEST_F(OneProcess, NeedsAStatusFile) {
    m_tree.add("7");
    m_tree.remove("7", "status");
    EXPECT_FALSE(isFound("7", information));
    EXPECT_FALSE(isFound("7", statistics));
}

TEST_F(OneProcess, NeedsACommandLineOnlyToBeDescribed) {
    m_tree.add("7");
    m_tree.remove("7", "cmdline");
    EXPECT_FALSE(isFound("7", information));
    EXPECT_TRUE(isFound("7", statistics));
}

TEST_F(OneProcess, NeedsNoLinkToItsProgram) {
    m_tree.add("7");
    m_tree.remove("7", "exe");
    EXPECT_EQ("", read("7", information).modulePath);
    EXPECT_TRUE(isFound("7", statistics));
}

TEST_F(OneProcess, HasNoPathIfItsLinkIsAFile) {
    m_tree.add("7");
    m_tree.remove("7", "exe");
    m_tree.write("7", "exe", "/usr/bin/prog");
    EXPECT_EQ("", read("7", information).modulePath);
}

TEST_F(OneProcess, HasThePathOfADeletedProgram) {
    m_tree.add("7");
    m_tree.link("7", "/usr/bin/prog (deleted)");
    EXPECT_EQ("/usr/bin/prog (deleted)", read("7", information).modulePath);
}

TEST_F(OneProcess, HasAPathOfAtMost512Bytes) {
    m_tree.add("7");
    for (const std::size_t size : {1U, 255U, 256U, 511U, 512U, 513U, 600U, 4000U}) {
        const std::string target(size, 'd');
        m_tree.link("7", target);
        EXPECT_EQ(target.substr(0, 512), read("7", information).modulePath) << size;
    }
}

TEST_F(OneProcess, IsLeftOutWhenItsStatCannotBeRead) {
    m_tree.add("7");
    m_tree.remove("7", "stat");
    std::filesystem::create_directory(m_tree.file("7", "stat"));
    EXPECT_FALSE(isFound("7", information));
    EXPECT_FALSE(isFound("7", statistics));
}

TEST_F(OneProcess, IsLeftOutWhenAFileCannotBeOpened) {
    for (const char* const name : {"stat", "cmdline", "status"}) {
        m_tree.add("7");
        m_tree.remove("7", name);
        // A link to itself: unlike permissions, this also fails for the superuser.
        std::filesystem::create_symlink(name, m_tree.file("7", name));
        EXPECT_FALSE(isFound("7", information)) << name;
        EXPECT_EQ(name == "cmdline"s, isFound("7", statistics)) << name;
        m_tree.remove("7");
    }
}

TEST_F(OneProcess, MayHaveUnreadableFiles) {
    m_tree.add("7");
    for (const char* const name : {"cmdline", "status"}) {
        m_tree.remove("7", name);
        std::filesystem::create_directory(m_tree.file("7", name));
    }
    const Record record = read("7", information);
    EXPECT_EQ(Texts{}, record.parameters);
    EXPECT_EQ(0U, record.realUserID);
    EXPECT_EQ(0U, read("7", statistics).realText);
}

TEST_F(OneProcess, LeavesNoDescriptorOpen) {
    m_tree.add("7");
    m_tree.add("8");
    m_tree.remove("8", "status");
    m_tree.add("9");
    m_tree.write("9", "stat", "x");
    const std::set<int> before = support::openDescriptors();
    EXPECT_EQ(Texts{"7"}, found(information));
    EXPECT_EQ(Texts{"7"}, found(statistics));
    EXPECT_EQ(before, support::openDescriptors());
}

} // namespace
