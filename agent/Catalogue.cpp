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
         "The enclosure of the host: model, manufacturer, serial number, location",
         {"Tag", "CreationClassName"}},
        {"QAV_System", "When the name of the host or of its operating system last changed", {}},
        {"QAV_System",
         "The host: name, contact, location, services, version of its operating system",
         {"Name", "CreationClassName"}},
        {"QAV_StorageExtent", "Memory, swap space and local file systems as storage: size and use", {}},
        {"QAV_OperatingSystem",
         "The running system: boot time, local time, boot device, numbers of users and processes",
         {}},
        {"QAV_TCPProtocolEndpoint", "TCP: settings", {}},
        {"QAV_TCPStatisticalData", "TCP: counters", {}},
        {"QAV_TCPProtocolEndpoint", "TCP: connections and listeners", {}},
        {"QAV_LANEndpointNetworkPortAssociation",
         "Which network interface (group 9) has which counters (group 10)",
         {}},
        {"QAV_LANEndpoint", "Network interfaces: address, state, speed", {}},
        {"QAV_NetworkPortStatistics", "Network interfaces: counters", {}},
        {"QAV_ICMPStatisticalData", "ICMP: counters", {}},
        {"QAV_IPProtocolEndpoint", "IP version 4: settings", {}},
        {"QAV_IPStatisticalData", "IP version 4: counters", {}},
        {"QAV_UDPStatisticalData", "UDP: counters", {}},
        {"QAV_SoftwareIdentity", "Installed packages", {}},
        {"QAV_UnixProcess", "Processes: name, program, arguments, kind and state", {}},
        {"QAV_OperatingSystem", "Boot time and local time, as in group 4", {}},
        {"QAV_MediaAccessDevice", "Disks", {}},
        {"QAV_DiskPartition", "Partitions of disks", {}},
        {"QAV_FileSystem", "Mounted file systems that store files", {}},
        {"HR_DEVICE", "Devices: processors, disks and network interfaces", {}},
        {"QAV_UnixProcessStatisticalInformation", "Processes: processor time and sizes", {}},
        {"QAV_ResidesOnPartition", "Which file system (group 20) is on which partition (group 19)", {}},
        {"QAV_ResidesOnExtent", "Which file system (group 20) is on which storage (group 3)", {}},
        {"HR_NETWORK", "Which device (group 21) a network interface (group 9) is", {}},
        {"QAV_K70ExpansionChassis", "Further enclosures", {}},
        {"QAV_XRULogicalModule", "Modules: memory modules and expansion cards", {}},
        {"QAV_XRUPackageDependency", "Which module (group 27) is in which enclosure (group 0)", {}},
        {"QAV_XRULogicalModuleLocation", "Which module (group 27) is in which slot (group 30)", {}},
        {"QAV_CoreTelephony_ModuleLocation", "Slots of modules", {}},
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

std::vector<long> groupsOfClass(std::string_view className) {
    std::vector<long> groups;
    for (const long group : everyGroup()) {
        if (ascii::equalsIgnoreCase(classOf(group).name, className))
            groups.push_back(group);
    }
    return groups;
}

} // namespace agent
