#include "host/Disks.hpp"
#include "host/FileSystems.hpp"
#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utmp.h>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** Size of a record in utmp(5). The C library of a 32-bit platform writes times of 32 bits for all programs,
 * also for those whose time_t has 64 bits. */
constexpr std::size_t utmpRecordSize = sizeof(void*) == 4 ? 384 : sizeof(utmp);

/** The line "btime" of /proc/stat, proc(5): seconds since the epoch. */
std::optional<CIMDateTime> bootTime(const Host& host) {
    const std::string stat = host.readFile("/proc/stat").value_or("");
    for (const std::string_view line : lines(stat)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() < 2 || fields[0] != "btime")
            continue;
        const std::optional<std::time_t> seconds = number<std::time_t>(fields[1]);
        return seconds ? std::optional<CIMDateTime>(DateTime(*seconds)) : std::nullopt;
    }
    return std::nullopt;
}

CIMDateTime now() {
    std::timespec moment{};
    ::clock_gettime(CLOCK_REALTIME, &moment);
    return localTime(moment);
}

/** Number of login sessions in utmp(5). */
std::optional<UInt32> numberOfUsers(const Host& host) {
    std::optional<std::string> file = host.readFile("/run/utmp");
    if (!file)
        file = host.readFile("/var/run/utmp");
    if (!file)
        return std::nullopt;
    UInt32 sessions = 0;
    for (std::size_t at = 0; at + utmpRecordSize <= file->size(); at += utmpRecordSize) {
        decltype(utmp::ut_type) type{};
        std::memcpy(&type, file->data() + at + offsetof(utmp, ut_type), sizeof type);
        if (type == USER_PROCESS)
            ++sessions;
    }
    return sessions;
}

/** Number of the directories of /proc whose names are process numbers. */
std::optional<UInt32> numberOfProcesses(const Host& host) {
    const std::optional<std::vector<std::string>> names = host.listDirectory("/proc");
    if (!names)
        return std::nullopt;
    const auto isProcess = [](const std::string& name) { return number<UInt32>(name).has_value(); };
    return static_cast<UInt32>(std::count_if(names->begin(), names->end(), isProcess));
}

/** RFC 2790, hrSystemInitialLoadDevice: index of the disk that the host boots from, see DeviceIndexes. */
std::optional<UInt32> bootDevice(const Host& host) {
    const std::vector<Disk> all = disks(host);
    for (const FileSystem& fileSystem : fileSystems(host)) {
        const Disk* const disk = fileSystem.isBootable ? backingDisk(fileSystem.mount, all, host) : nullptr;
        if (disk)
            return disk->deviceIndex;
    }
    return std::nullopt;
}

const ClassDeclaration operatingSystemClass{"QAV_OperatingSystem",
                                            {{"CreationClassName", CIMDataType::STRING, Role::key},
                                             {"Name", CIMDataType::STRING, Role::key},
                                             {"LastBootUpTime", CIMDataType::DATETIME},
                                             {"LocalDateTime", CIMDataType::DATETIME},
                                             {"_INIT_LOAD_DEVICE", CIMDataType::UINT32},
                                             {"_INIT_LOAD_PARAMETERS", CIMDataType::STRING},
                                             {"NumberOfUsers", CIMDataType::UINT32},
                                             {"NumberOfProcesses", CIMDataType::UINT32},
                                             {"MaxNumberOfProcesses", CIMDataType::UINT32}}};

CIMInstance operatingSystem(const Host& host) {
    return InstanceBuilder(operatingSystemClass)
        .set("CreationClassName", CIMValue(operatingSystemClass.name))
        .set("Name", host.name())
        .set("LastBootUpTime", bootTime(host))
        .set("LocalDateTime", CIMValue(now()))
        .set("_INIT_LOAD_DEVICE", bootDevice(host))
        // RFC 2790, hrSystemInitialLoadParameters: the command line of the kernel, proc(5).
        .set("_INIT_LOAD_PARAMETERS", host.readLine("/proc/cmdline"))
        .set("NumberOfUsers", numberOfUsers(host))
        .set("NumberOfProcesses", numberOfProcesses(host))
        .set("MaxNumberOfProcesses", host.readNumber<UInt32>("/proc/sys/kernel/pid_max"))
        .build();
}

} // namespace

std::vector<Provider> operatingSystemProviders(const Host& host) {
    return {{&operatingSystemClass, [&host] { return only(operatingSystem(host)); }}};
}

} // namespace cimom
