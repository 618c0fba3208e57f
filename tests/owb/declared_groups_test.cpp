// Every class has one instance, which a site file declares with every property that the tables name.
#include "ServedGroups.hpp"

#include <algorithm>
#include <cstring>

namespace {

class DeclaredGroups : public ServedGroups {};

/** A value in JSON, for the site file, and as an agent reads it. */
struct Value {
    std::string json;
    std::string text;
};

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text)
        result += (c == '"' || c == '\\' ? "\\" : "") + std::string(1, c);
    return result + "\"";
}

/** A class with its keys and the kinds of its properties: a number, "flag", "time", "list" of numbers, or the
 * value itself. Properties without a kind are texts. */
struct ServedClass {
    const char* name;
    std::map<std::string, std::string> keys;
    std::map<std::string, std::string> kinds;
};

const char* const number = "number";

std::map<std::string, std::string> numbers(const std::vector<std::string>& properties) {
    std::map<std::string, std::string> kinds;
    for (const std::string& property : properties)
        kinds[property] = number;
    return kinds;
}

const std::string chassisPath =
    "/root/cimv2:QAV_K70Chassis.Tag=\"Chassis\",CreationClassName=\"QAV_K70Chassis\"";
const std::string modulePath =
    "/root/cimv2:QAV_XRULogicalModule.CreationClassName=\"QAV_XRULogicalModule\",DeviceID=\"x\"";
const std::string locationPath = "/root/cimv2:QAV_CoreTelephony_ModuleLocation.Key=\"x\"";
const std::string fileSystemPath =
    "/root/cimv2:QAV_FileSystem.CreationClassName=\"QAV_FileSystem\",Name=\"/x\"";
const std::string partitionPath =
    "/root/cimv2:QAV_DiskPartition.CreationClassName=\"QAV_DiskPartition\",DeviceID=\"x1\"";
const std::string extentPath =
    "/root/cimv2:QAV_StorageExtent.CreationClassName=\"QAV_StorageExtent\",DeviceID=\"x\"";
const std::string endpointPath =
    "/root/cimv2:QAV_LANEndpoint.SystemCreationClassName=\"QAV_System\",SystemName="
    "\"box\",CreationClassName=\"QAV_LANEndpoint\",Name=\"eth9\"";
const std::string portPath = "/root/cimv2:QAV_NetworkPortStatistics.InstanceID=\"eth9\"";

// The fake host has only a name. The declared instances have the keys of its own instances and replace them.
const std::vector<ServedClass> classes = {
    {"QAV_K70Chassis",
     {{"Tag", "Chassis"}, {"CreationClassName", "QAV_K70Chassis"}},
     {{"CanBeFRUed", "flag"}, {"PhysicalType", number}, {"_INDEX", number}, {"_CONTAINED_IN", number}}},
    {"QAV_System",
     {{"Name", "box"}, {"CreationClassName", "QAV_System"}},
     {{"SysServices", number}, {"LastChangeTime", "time"}}},
    {"QAV_StorageExtent",
     {{"CreationClassName", "QAV_StorageExtent"}},
     {{"StorageType", number},
      {"Blocksize", number},
      {"NumberOfBlocks", number},
      {"StorageUsed", number},
      {"AllocationFailures", number},
      {"DeviceID", "memory"},
      {"_INDEX", number}}},
    {"QAV_OperatingSystem",
     {{"CreationClassName", "QAV_OperatingSystem"}, {"Name", "box"}},
     {{"_INIT_LOAD_DEVICE", number},
      {"LastBootUpTime", "time"},
      {"LocalDateTime", "time"},
      {"NumberOfUsers", number},
      {"NumberOfProcesses", number},
      {"MaxNumberOfProcesses", number}}},
    {"QAV_TCPProtocolEndpoint",
     {{"CreationClassName", "QAV_TCPProtocolEndpoint"}, {"Name", "TCP"}},
     numbers({"TimeoutAlgorithm", "TimeoutMin", "TimeoutMax", "MaxConnections", "ConnectionState",
              "LocalPort", "RemotePort"})},
    {"QAV_LANEndpointNetworkPortAssociation", {}, {{"Dependent", endpointPath}, {"Antecedent", portPath}}},
    {"QAV_LANEndpoint",
     {},
     {{"_INDEX", number},
      {"TimeOfLastStateChange", "time"},
      {"OperationalStatus", "list"},
      {"EnabledState", number},
      {"Speed", number},
      {"MaxDataSize", number},
      {"ProtocolIFType", number}}},
    {"QAV_NetworkPortStatistics",
     {},
     numbers({"InOctets", "InUcastPkts", "InNUcastPkts", "InDiscards", "InErrors", "InUnknownProtos",
              "OutOctets", "OutUcastPkts", "OutNUcastPkts", "OutDiscards", "OutErrors", "OutQLen"})},
    {"QAV_IPProtocolEndpoint",
     {{"CreationClassName", "QAV_IPProtocolEndpoint"}, {"Name", "IP"}},
     numbers({"Forwarding", "DefaultTTL", "ReassemblyTimeout"})},
    {"QAV_TCPStatisticalData", {{"InstanceID", "TCP"}}, {{"*", number}}},
    {"QAV_ICMPStatisticalData", {{"InstanceID", "ICMP"}}, {{"*", number}}},
    {"QAV_IPStatisticalData", {{"InstanceID", "IP"}}, {{"*", number}}},
    {"QAV_UDPStatisticalData", {{"InstanceID", "UDP"}}, {{"*", number}}},
    {"QAV_SoftwareIdentity", {{"InstanceID", "x"}}, {{"Classifications", "list"}, {"InstalledDate", "time"}}},
    {"QAV_MediaAccessDevice",
     {{"CreationClassName", "QAV_MediaAccessDevice"}, {"DeviceID", "x"}},
     {{"Capabilities", "list"},
      {"StorageType", number},
      {"MaxMediaSize", number},
      {"_HR_DEVICE_INDEX", number},
      {"OperationalStatus", "list"},
      {"Errors", number}}},
    {"QAV_DiskPartition",
     {{"CreationClassName", "QAV_DiskPartition"}},
     numbers({"Index", "Size", "HR_DEVICE_INDEX"})},
    {"QAV_FileSystem",
     {{"CreationClassName", "QAV_FileSystem"}, {"Name", "/x"}},
     {{"Index", number},
      {"ReadOnly", "flag"},
      {"Bootable", "flag"},
      {"StorageIndex", number},
      {"LastFullBackupDate", "time"},
      {"LastPartialBackupDate", "time"}}},
    {"HR_DEVICE",
     {{"DeviceID", "x"}},
     numbers({"_HR_DEVICE_INDEX", "_HR_DEVICE_TYPE", "_HR_DEVICE_STATUS", "_HR_DEVICE_ERRORS"})},
    {"HR_NETWORK", {{"DeviceID", "x"}}, numbers({"_HR_NETWORK_INDEX", "_HR_DEVICE_INDEX"})},
    {"QAV_ResidesOnPartition", {}, {{"Dependent", fileSystemPath}, {"Antecedent", partitionPath}}},
    {"QAV_ResidesOnExtent", {}, {{"Dependent", fileSystemPath}, {"Antecedent", extentPath}}},
    {"QAV_K70ExpansionChassis",
     {{"CreationClassName", "QAV_K70ExpansionChassis"}},
     {{"CanBeFRUed", "flag"}, {"PhysicalType", number}, {"_INDEX", number}}},
    {"QAV_XRULogicalModule",
     {{"CreationClassName", "QAV_XRULogicalModule"}},
     {{"CanBeFRUed", "flag"}, {"PhysicalType", number}, {"_INDEX", number}, {"_CONTAINED_IN", number}}},
    {"QAV_XRUPackageDependency", {}, {{"Dependent", modulePath}, {"Antecedent", chassisPath}}},
    {"QAV_XRULogicalModuleLocation", {}, {{"SameElement", locationPath}, {"SystemElement", modulePath}}},
    {"QAV_CoreTelephony_ModuleLocation", {}, {}},
};

/** A value of a property's kind, different for each property of the group. */
Value valueOf(const ServedClass& served, const std::string& property, long nom) {
    const auto all = served.kinds.find("*");
    const auto own = served.kinds.find(property);
    const std::string kind = all != served.kinds.end()   ? all->second
                             : own != served.kinds.end() ? own->second
                                                         : "text";
    const std::string some = std::to_string(100 + nom);
    if (kind == number)
        return {some, some};
    if (kind == "flag")
        return {"true", "true"};
    if (kind == "time")
        return {"\"202611211234" + some.substr(1) + ".000000+000\"",
                "202611211234" + some.substr(1) + ".000000+000"};
    if (kind == "list")
        return {"[" + some + ", 7]", some + ",7"};
    if (kind != "text")
        return {quoted(kind), kind};
    return {quoted("value " + some), "value " + some};
}

const ServedClass& classOf(long group) {
    return *std::find_if(classes.begin(), classes.end(), [group](const ServedClass& served) {
        return std::strcmp(served.name, ExtGroupCimClass[group]) == 0;
    });
}

/** The expected row of a group: every property that the table lists for it. */
Row expectedRow(long group) {
    Row row;
    for (const ExtItem* item = ExtItemList; item->group >= 0; ++item) {
        if (item->group == group)
            row[item->property] = valueOf(classOf(group), item->property, item->nom).text;
    }
    return row;
}

bool isOfProcesses(long group) {
    return group == 16 || group == 22; // from /proc, not from site files
}

/** A site file with an instance of every class, with every property that the tables list for it. */
std::string everyClass() {
    std::map<std::string, std::map<std::string, std::string>> instances;
    for (const ServedClass& served : classes) {
        for (const auto& [key, value] : served.keys)
            instances[served.name][key] = quoted(value);
    }
    for (const ExtItem* item = ExtItemList; item->group >= 0; ++item) {
        if (!isOfProcesses(item->group))
            instances[ExtGroupCimClass[item->group]][item->property] =
                valueOf(classOf(item->group), item->property, item->nom).json;
    }
    std::string document;
    for (const auto& [name, properties] : instances) {
        document += (document.empty() ? "{" : ",\n") + quoted(name) + ": [{";
        std::string separator;
        for (const auto& [property, value] : properties) {
            document += separator + quoted(property) + ": " + value;
            separator = ", ";
        }
        document += "}]";
    }
    return document + "}\n";
}

// If several groups share a class, the last one that lists a property decides its value.
TEST_F(DeclaredGroups, HaveEveryPropertyOfTheirTables) {
    const support::TempDir directory;
    directory.write("root/proc/sys/kernel/hostname", "box\n");
    directory.write("site/all.json", everyClass());
    run(
        [] {
            for (long group = 0; group <= 30; ++group) {
                if (isOfProcesses(group))
                    continue;
                const std::vector<Row> rows = rowsOf(group);
                ASSERT_EQ(1U, rows.size()) << group;
                EXPECT_EQ(expectedRow(group), rows[0]) << group << " " << ExtGroupCimClass[group];
            }
        },
        {"--root", directory.file("root"), "--instances", directory.file("site")});
}

} // namespace
