#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"
#include "host/Disks.hpp"
#include "host/FileSystems.hpp"
#include "host/Residence.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

#include <algorithm>
#include <cstring>
#include <utmp.h>

namespace cimom {

using namespace OpenWBEM;

namespace {

static_assert(sizeof(utmp) == 384, "the size of a record, which is the same in 32-bit and 64-bit programs");

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
    return DateTime(moment.tv_sec, static_cast<UInt32>(moment.tv_nsec / 1000));
}

/** Number of login sessions in utmp(5). */
std::optional<UInt32> users(const Host& host) {
    std::optional<std::string> file = host.readFile("/run/utmp");
    if (!file)
        file = host.readFile("/var/run/utmp");
    if (!file)
        return std::nullopt;
    UInt32 sessions = 0;
    for (std::size_t at = 0; at + sizeof(utmp) <= file->size(); at += sizeof(utmp)) {
        utmp record;
        std::memcpy(&record, file->data() + at, sizeof record);
        if (record.ut_type == USER_PROCESS)
            ++sessions;
    }
    return sessions;
}

/** Number of the folders of /proc that are named by a process number. */
std::optional<UInt32> processes(const Host& host) {
    const std::optional<std::vector<std::string>> names = host.listDirectory("/proc");
    if (!names)
        return std::nullopt;
    const auto isProcess = [](const std::string& name) { return number<UInt32>(name).has_value(); };
    return static_cast<UInt32>(std::count_if(names->begin(), names->end(), isProcess));
}

/** Index of the disk that the host boots from, see DeviceIndexes; RFC 2790, hrSystemInitialLoadDevice. */
std::optional<UInt32> bootDevice(const Host& host) {
    const std::vector<Disk> all = disks(host);
    for (const FileSystem& fileSystem : fileSystems(host)) {
        const Disk* const disk = fileSystem.isBootable ? diskOf(fileSystem.mount, all, host) : nullptr;
        if (disk)
            return disk->deviceIndex;
    }
    return std::nullopt;
}

/** One instance: the running system. */
class OperatingSystem : public Provider {
public:
    explicit OperatingSystem(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        InstanceBuilder instance(m_declaration);
        instance.set("CreationClassName", CIMValue(m_declaration.name))
            .set("Name", m_host.name())
            .set("LastBootUpTime", bootTime(m_host))
            .set("LocalDateTime", CIMValue(now()))
            .set("_INIT_LOAD_DEVICE", bootDevice(m_host))
            // RFC 2790, hrSystemInitialLoadParameters: of the kernel, proc(5).
            .set("_INIT_LOAD_PARAMETERS", m_host.readLine("/proc/cmdline"))
            .set("NumberOfUsers", users(m_host))
            .set("NumberOfProcesses", processes(m_host))
            .set("MaxNumberOfProcesses", m_host.readNumber<UInt32>("/proc/sys/kernel/pid_max"));
        return only(instance.build());
    }

private:
    const ClassDeclaration m_declaration{"QAV_OperatingSystem",
                                         {{"CreationClassName", CIMDataType::STRING, Role::key},
                                          {"Name", CIMDataType::STRING, Role::key},
                                          {"LastBootUpTime", CIMDataType::DATETIME},
                                          {"LocalDateTime", CIMDataType::DATETIME},
                                          {"_INIT_LOAD_DEVICE", CIMDataType::UINT32},
                                          {"_INIT_LOAD_PARAMETERS", CIMDataType::STRING},
                                          {"NumberOfUsers", CIMDataType::UINT32},
                                          {"NumberOfProcesses", CIMDataType::UINT32},
                                          {"MaxNumberOfProcesses", CIMDataType::UINT32}}};
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeOperatingSystem(const Host& host) {
    return std::make_unique<OperatingSystem>(host);
}

} // namespace cimom
