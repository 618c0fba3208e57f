#include "agent/Catalogue.hpp"

#include "util/Ascii.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <numeric>

namespace agent {
namespace {

const std::array<GroupClass, highestGroup + 1>& groupClasses() {
    static const std::array<GroupClass, highestGroup + 1> classes = {{
        {"QAV_K70Chassis",
         "chassis",
         "The enclosure of the host: model, manufacturer, serial number, location",
         {"Tag", "CreationClassName"}},
        {"QAV_System",
         "system-change",
         "When the name of the host or of its operating system last changed",
         {}},
        {"QAV_System",
         "system",
         "The host: name, contact, location, services, version of its operating system",
         {"Name", "CreationClassName"}},
        {"QAV_StorageExtent",
         "storage",
         "Memory, swap space and local file systems as storage: size and use",
         {}},
        {"QAV_OperatingSystem",
         "os",
         "The running system: boot time, local time, boot device, numbers of users and processes",
         {}},
        {"QAV_TCPProtocolEndpoint", "tcp-settings", "TCP: settings", {}},
        {"QAV_TCPStatisticalData", "tcp", "TCP: counters", {}},
        {"QAV_TCPProtocolEndpoint", "connections", "TCP: connections and listeners", {}},
        {"QAV_LANEndpointNetworkPortAssociation",
         "interface-traffic",
         "Which network interface (group 9) has which counters (group 10)",
         {}},
        {"QAV_LANEndpoint", "interfaces", "Network interfaces: address, state, speed", {}},
        {"QAV_NetworkPortStatistics", "traffic", "Network interfaces: counters", {}},
        {"QAV_ICMPStatisticalData", "icmp", "ICMP: counters", {}},
        {"QAV_IPProtocolEndpoint", "ip-settings", "IP version 4: settings", {}},
        {"QAV_IPStatisticalData", "ip", "IP version 4: counters", {}},
        {"QAV_UDPStatisticalData", "udp", "UDP: counters", {}},
        {"QAV_SoftwareIdentity", "packages", "Installed packages", {}},
        {"QAV_UnixProcess", "processes", "Processes: name, program, arguments, kind and state", {}},
        {"QAV_OperatingSystem", "clock", "Boot time and local time, as in group 4", {}},
        {"QAV_MediaAccessDevice", "disks", "Disks", {}},
        {"QAV_DiskPartition", "partitions", "Partitions of disks", {}},
        {"QAV_FileSystem", "filesystems", "Mounted file systems that store files", {}},
        {"HR_DEVICE", "devices", "Devices: processors, disks and network interfaces", {}},
        {"QAV_UnixProcessStatisticalInformation", "process-usage", "Processes: processor time and sizes", {}},
        {"QAV_ResidesOnPartition",
         "filesystem-partitions",
         "Which file system (group 20) is on which partition (group 19)",
         {}},
        {"QAV_ResidesOnExtent",
         "filesystem-storage",
         "Which file system (group 20) is on which storage (group 3)",
         {}},
        {"HR_NETWORK", "interface-devices", "Which device (group 21) a network interface (group 9) is", {}},
        {"QAV_K70ExpansionChassis", "enclosures", "Further enclosures", {}},
        {"QAV_XRULogicalModule", "modules", "Modules: memory modules and expansion cards", {}},
        {"QAV_XRUPackageDependency",
         "module-enclosures",
         "Which module (group 27) is in which enclosure (group 0)",
         {}},
        {"QAV_XRULogicalModuleLocation",
         "module-slots",
         "Which module (group 27) is in which slot (group 30)",
         {}},
        {"QAV_CoreTelephony_ModuleLocation", "slots", "Slots of modules", {}},
    }};
    return classes;
}

template <class Predicate>
const Attribute* findFirst(const Predicate& matches) {
    const auto found = std::find_if(attributes.begin(), attributes.end(), matches);
    return found == attributes.end() ? nullptr : &*found;
}

} // namespace

const char* wordOf(Kind kind) {
    switch (kind) {
    case Kind::key:
        return "key";
    case Kind::index:
        return "index";
    case Kind::reference:
        return "reference";
    case Kind::state:
        return "state";
    case Kind::counter:
        return "counter";
    case Kind::gauge:
        return "gauge";
    case Kind::size:
        return "size";
    case Kind::date:
        return "date";
    case Kind::interval:
        return "interval";
    case Kind::flag:
        return "flag";
    case Kind::text:
        break;
    }
    return "text";
}

bool Attribute::isSettable() const {
    return isWritable && !classOf(group).writeKeys.empty();
}

const char* ValueNames::find(std::string_view value) const {
    const auto number = util::decimal<long>(value);
    const auto found =
        std::find_if(begin(), end(), [&number](const ValueName& each) { return number == each.value; });
    return found == end() ? nullptr : found->name;
}

std::vector<const Attribute*> attributesOf(long group) {
    std::vector<const Attribute*> found;
    for (const Attribute& attribute : attributes) {
        if (attribute.group == group)
            found.push_back(&attribute);
    }
    return found;
}

std::vector<const Attribute*> attributesByNominator(long group) {
    std::vector<const Attribute*> sorted = attributesOf(group);
    std::sort(sorted.begin(), sorted.end(),
              [](const Attribute* one, const Attribute* other) { return one->nominator < other->nominator; });
    return sorted;
}

const Attribute* findAttribute(long group, std::string_view nameOrNominator) {
    const auto nominator = util::decimal<long>(nameOrNominator);
    return findFirst([&](const Attribute& each) {
        return each.group == group &&
               (nominator == each.nominator || ascii::equalsIgnoreCase(each.property, nameOrNominator));
    });
}

const Attribute* findAttribute(std::string_view className, std::string_view property) {
    return findFirst([&](const Attribute& each) {
        return ascii::equalsIgnoreCase(each.property, property) &&
               ascii::equalsIgnoreCase(classOf(each.group).name, className);
    });
}

std::vector<long> everyGroup() {
    std::vector<long> groups(highestGroup + 1);
    std::iota(groups.begin(), groups.end(), 0);
    return groups;
}

const GroupClass& classOf(long group) {
    return groupClasses().at(static_cast<std::size_t>(group));
}

std::optional<long> groupOfName(std::string_view shortName) {
    for (const long group : everyGroup()) {
        if (ascii::equalsIgnoreCase(classOf(group).shortName, shortName))
            return group;
    }
    return std::nullopt;
}

std::vector<long> groupsOfClass(std::string_view className) {
    std::vector<long> groups;
    for (const long group : everyGroup()) {
        if (ascii::equalsIgnoreCase(classOf(group).name, className))
            groups.push_back(group);
    }
    return groups;
}

} // namespace agent
