// The values of owb-agentx against those of net-snmp's own modules, for the same host, in one master.
#include "snmp/SnmpAgent.hpp"

#include <algorithm>
#include <chrono>
#include <optional>
#include <set>
#include <thread>

using namespace support;
using namespace snmp_test;

namespace {

enum class Differs {
    /** The values; both have the instance. */
    value,
    /** The rows: net-snmp names or chooses them in another way. */
    row,
    /** net-snmp does not serve the objects. */
    missing
};

struct Difference {
    const char* oid; // a prefix below mib-2
    Differs kind;
    const char* reason;
};

const Difference differences[] = {
    {"1.1", Differs::value, "sysDescr: net-snmp adds the machine's architecture"},
    {"1.2", Differs::value, "sysObjectID: owb has no enterprise number, so no agent identifier"},
    {"1.4", Differs::value, "sysContact: each agent stores its own"},
    {"1.6", Differs::value, "sysLocation: each agent stores its own"},
    {"1.7", Differs::missing, "sysServices: net-snmp has it only if it is configured"},
    {"2.2.1.2", Differs::value, "ifDescr: net-snmp appends names of PCI devices"},
    {"2.2.1.5", Differs::value, "ifSpeed: unknown to the kernel; net-snmp guesses 10 Mbit/s"},
    {"31.1.1.1.15", Differs::value, "ifHighSpeed: likewise"},
    {"2.2.1.8.1", Differs::value, "ifOperStatus of lo: the kernel says unknown, net-snmp up"},
    {"2.2.1.9", Differs::value, "ifLastChange: net-snmp's is of its own start"},
    {"2.2.1.11", Differs::value, "ifInUcastPkts: net-snmp subtracts multicast packets"},
    {"2.2.1.17", Differs::value, "ifOutUcastPkts: likewise"},
    {"2.2.1.12", Differs::value, "ifInNUcastPkts: net-snmp adds broadcast packets"},
    {"31.1.1.1.7", Differs::value, "ifHCInUcastPkts: net-snmp subtracts multicast packets"},
    {"31.1.1.1.11", Differs::value, "ifHCOutUcastPkts: likewise"},
    {"4.13", Differs::value, "ipReasmTimeout: net-snmp says 0, the kernel 30 s"},
    {"4.23", Differs::missing, "ipRoutingDiscards: net-snmp on Linux leaves it out"},
    {"4.31.1.1", Differs::row, "ipSystemStatsTable: owb has no IPv6"},
    {"5.29.1", Differs::row, "icmpStatsTable: owb has no IPv6"},
    {"6.17", Differs::missing, "tcpHCInSegs: net-snmp does not serve it"},
    {"6.18", Differs::missing, "tcpHCOutSegs: net-snmp does not serve it"},
    {"6.13.1", Differs::row, "tcpConnTable: connections come and go"},
    {"6.19.1", Differs::row, "tcpConnectionTable: connections come and go"},
    {"6.20.1", Differs::row, "tcpListenerTable: listeners come and go"},
    {"6.19.1.8", Differs::value, "tcpConnectionProcess: not known to owb"},
    {"6.20.1.4", Differs::value, "tcpListenerProcess: not known to owb"},
    {"7.8", Differs::missing, "udpHCInDatagrams: net-snmp does not serve it"},
    {"7.9", Differs::missing, "udpHCOutDatagrams: net-snmp does not serve it"},
    {"25.1.2", Differs::value, "hrSystemDate: the time of each reading"},
    {"25.1.3", Differs::value,
     "hrSystemInitialLoadDevice: owb finds the disk, net-snmp its number of no device"},
    {"25.1.4", Differs::value, "hrSystemInitialLoadParameters: net-snmp exceeds 128 octets"},
    {"25.1.5", Differs::value, "hrSystemNumUsers: changes"},
    {"25.1.6", Differs::value, "hrSystemProcesses: changes"},
    {"25.1.7", Differs::value, "hrSystemMaxProcesses: net-snmp says 0 for no maximum"},
    {"25.2.3.1", Differs::row,
     "hrStorageTable: net-snmp numbers file systems in its own order and adds kinds of memory"},
    {"25.2.3.1.6", Differs::value, "hrStorageUsed: changes; net-snmp counts caches"},
    {"25.3.2.1", Differs::row,
     "hrDeviceTable: owb numbers processors from 196609, and net-snmp disks otherwise"},
    {"25.3.2.1.3", Differs::value, "hrDeviceDescr: net-snmp adds vendor and \"network interface\""},
    {"25.3.2.1.4", Differs::value, "hrDeviceID: not known to owb"},
    {"25.3.2.1.5", Differs::value, "hrDeviceStatus of lo: the kernel says unknown"},
    {"25.3.6.1", Differs::row, "hrDiskStorageTable: net-snmp needs access to the devices"},
    {"25.3.7.1", Differs::row, "hrPartitionTable: likewise"},
    {"25.3.8.1", Differs::row, "hrFSTable: net-snmp numbers in its own order and leaves /dev out"},
    {"25.3.8.1", Differs::value, "hrFSTable: an equal number may name another file system"},
    {"25.4.2.1", Differs::row, "hrSWRunTable: processes come and go"},
    {"25.4.2.1.4", Differs::value,
     "hrSWRunPath: the inventory leaves it out where /proc/PID/exe cannot be read"},
    {"25.4.2.1.5", Differs::value,
     "hrSWRunParameters: a process may change them; controls are shown otherwise"},
    {"25.4.2.1.6", Differs::value, "hrSWRunType: needs the software inventory, net-snmp guesses"},
    {"25.4.2.1.7", Differs::value,
     "hrSWRunStatus: changes; kernel threads that idle are notRunnable, not invalid"},
    {"25.5.1.1", Differs::row, "hrSWRunPerfTable: processes come and go"},
    {"25.5.1.1.2", Differs::value, "hrSWRunPerfMem: owb has the virtual, net-snmp the resident size"},
    {"25.6.1", Differs::missing, "hrSWInstalledLastChange: net-snmp does not serve it"},
    {"25.6.2", Differs::missing, "hrSWInstalledLastUpdateTime: net-snmp does not serve it"},
    {"25.6.3.1", Differs::row, "hrSWInstalledTable: net-snmp also counts removed packages"},
    {"25.6.3.1.2", Differs::value, "hrSWInstalledName: net-snmp appends the architecture"},
    {"25.6.3.1.4", Differs::value,
     "hrSWInstalledType: package managers do not say; net-snmp says application"},
    {"25.6.3.1.5", Differs::value, "hrSWInstalledDate: owb has fractions of seconds"},
    {"47", Differs::missing, "ENTITY-MIB: net-snmp does not serve it"}};

bool startsWith(const Below& oid, const Below& prefix) {
    return oid.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), oid.begin());
}

bool differs(const Below& oid, Differs kind) {
    return std::any_of(std::begin(differences), std::end(differences), [&](const Difference& difference) {
        return difference.kind == kind && startsWith(oid, below(difference.oid));
    });
}

/** The number of a counter, of a time, or of a value that grows. */
std::optional<std::uint64_t> counterIn(const std::string& value) {
    for (const char* const type : {"Counter32: ", "Counter64: "}) {
        if (value.rfind(type, 0) == 0)
            return std::stoull(value.substr(std::string(type).size()));
    }
    if (value.rfind("Timeticks: (", 0) == 0)
        return std::stoull(value.substr(12));
    return std::nullopt;
}

/** Whether a value lies between two readings of the other agent. */
bool isBetween(const std::string& first, const std::string& value, const std::string& last) {
    const auto low = counterIn(first);
    const auto mid = counterIn(value);
    const auto high = counterIn(last);
    if (!low || !mid || !high)
        return false;
    if (value.rfind("Counter32", 0) == 0) // modulo 2^32
        return static_cast<std::uint32_t>(*mid - *low) <= static_cast<std::uint32_t>(*high - *low);
    return *low <= *mid && *mid <= *high;
}

/** Column of hrSWRunPerfCPU, a number of the type INTEGER that grows. */
bool isProcessorTime(const Below& oid) {
    return startsWith(oid, {25, 5, 1, 1, 1});
}

/** hrSWRunName of a worker thread of the kernel, which names the work that it does now. */
bool isKernelWorker(const Below& oid, const std::string& value) {
    return startsWith(oid, {25, 4, 2, 1, 2}) && value.rfind("STRING: \"kworker/", 0) == 0;
}

bool isEqual(const Below& oid, const std::string& first, const std::string& value, const std::string& last) {
    if (value == first || value == last || isBetween(first, value, last))
        return true;
    const auto number = [](const std::string& text) { return std::stoul(text.substr(9)); }; // "INTEGER: "
    return isProcessorTime(oid) && number(first) <= number(value) && number(value) <= number(last);
}

} // namespace

class SnmpReference : public SnmpAgent {
protected:
    void SetUp() override {
        SnmpAgent::SetUp();
        if (!IsSkipped())
            start({}, {"--counters-age", "1", "--tables-age", "1"});
    }
};

TEST_F(SnmpReference, ValuesAreThoseOfNetSnmpButForNamedDifferences) {
    const Values first = walk("");
    std::this_thread::sleep_for(std::chrono::milliseconds(1100)); // the age of owb's values
    walk("owb");                                                  // reads them again
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const Values ours = walk("owb");
    std::size_t compared = 0;
    std::vector<Below> open;
    for (const auto& [oid, value] : ours) {
        const auto theirs = first.find(oid);
        if (theirs == first.end())
            EXPECT_TRUE(differs(oid, Differs::missing) || differs(oid, Differs::row))
                << textOf(oid) << " = " << value;
        else if (!differs(oid, Differs::value) && !isKernelWorker(oid, value))
            open.push_back(oid);
    }
    // net-snmp's values are up to a minute old: a value above its first reading is at most a later one.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(75);
    Values last;
    for (;;) {
        last = walk("");
        std::vector<Below> still;
        for (const Below& oid : open) {
            const auto at = last.find(oid);
            if (at == last.end()) {
                EXPECT_TRUE(differs(oid, Differs::row)) << textOf(oid);
                continue;
            }
            if (isEqual(oid, first.at(oid), ours.at(oid), at->second))
                ++compared;
            else
                still.push_back(oid);
        }
        open = still;
        if (open.empty() || std::chrono::steady_clock::now() > end)
            break;
        std::this_thread::sleep_for(std::chrono::seconds(2));
    }
    for (const Below& oid : open)
        ADD_FAILURE() << textOf(oid) << ": " << ours.at(oid) << " is not between " << first.at(oid) << " and "
                      << last.at(oid);
    EXPECT_LT(250u, compared);
}

TEST_F(SnmpReference, EachInstanceOfNetSnmpInAServedColumnIsThereButForNamedDifferences) {
    const Values theirs = walk("");
    const Values ours = walk("owb");
    // All columns here have two, four or five sub-identifiers: the instances of one share all but the last.
    std::set<Below> columns;
    for (const auto& [oid, value] : ours)
        columns.insert(Below(oid.begin(), oid.end() - 1));
    std::size_t compared = 0;
    for (const auto& [oid, value] : theirs) {
        if (columns.count(Below(oid.begin(), oid.end() - 1)) == 0 || differs(oid, Differs::row))
            continue;
        // Values that the kernel does not know: the instance is absent, net-snmp guesses.
        if (differs(oid, Differs::value))
            continue;
        ++compared;
        EXPECT_EQ(1u, ours.count(oid)) << textOf(oid) << " = " << value;
    }
    EXPECT_LT(80u, compared);
}

TEST_F(SnmpReference, FileSystemsHaveTheSizesOfNetSnmp) {
    const auto sizes = [](const Values& values) {
        std::map<std::string, std::uint64_t> all;
        for (const auto& [oid, value] : values) {
            if (!startsWith(oid, {25, 2, 3, 1, 3}))
                continue;
            const auto column = [&](std::uint32_t number) {
                const auto found = values.find({25, 2, 3, 1, number, oid.back()});
                return found == values.end() ? 0 : std::stoull(found->second.substr(9)); // "INTEGER: "
            };
            all[value] = column(4) * column(5);
        }
        return all;
    };
    const auto theirs = sizes(walk(""));
    const auto ours = sizes(walk("owb"));
    for (const std::string name : {"STRING: \"/\"", "STRING: \"Physical memory\""}) {
        ASSERT_EQ(1u, ours.count(name)) << name;
        EXPECT_EQ(theirs.at(name), ours.at(name)) << name;
    }
    EXPECT_EQ(get("25.2.2.0", ""), get("25.2.2.0"));
}
