#include "host/NetworkInterfaces.hpp"

#include "providers/Association.hpp"
#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"
#include "schema/Namespace.hpp"

#include <linux/if_arp.h>

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not report when the state of an interface last changed.
const ClassDeclaration lanEndpointClass{"QAV_LANEndpoint",
                                        {{"SystemCreationClassName", CIMDataType::STRING, Role::key},
                                         {"SystemName", CIMDataType::STRING, Role::key},
                                         {"CreationClassName", CIMDataType::STRING, Role::key},
                                         {"Name", CIMDataType::STRING, Role::key},
                                         {"_INDEX", CIMDataType::UINT32},
                                         {"MACAddress", CIMDataType::STRING},
                                         {"Description", CIMDataType::STRING},
                                         {"TimeOfLastStateChange", CIMDataType::DATETIME},
                                         {"OperationalStatus", CIMDataType::UINT16, Role::state, true},
                                         {"EnabledState", CIMDataType::UINT16},
                                         {"Speed", CIMDataType::UINT64},
                                         {"MaxDataSize", CIMDataType::UINT32},
                                         {"ProtocolIFType", CIMDataType::UINT16}}};

/** CIM_LANEndpoint.MACAddress: twelve digits. An address of another length is not a MAC address. */
std::optional<std::string> macAddress(const std::optional<std::string>& address) {
    const std::size_t octets = 6;
    if (!address || address->size() != octets * 3 - 1)
        return std::nullopt;
    std::string digits;
    for (std::size_t i = 0; i < octets; ++i) {
        const std::string octet = address->substr(3 * i, 2);
        const bool isSeparated = i + 1 == octets || (*address)[3 * i + 2] == ':';
        if (!isSeparated || !number<UInt8>(octet, 16))
            return std::nullopt;
        digits += octet;
    }
    return digits;
}

/** CIM_ManagedSystemElement.OperationalStatus: one value. */
std::optional<UInt16Array> operationalStatus(std::optional<OperStatus> status) {
    static const UInt16 values[] = {
        2,  // up: OK
        10, // down: stopped
        11, // testing: in service
        0,  // unknown: the driver does not report a status
        15, // dormant: dormant
        6,  // not present: error
        16, // lower layer down: supporting entity in error
    };
    if (!status)
        return std::nullopt;
    return UInt16Array(1, values[static_cast<int>(*status) - static_cast<int>(OperStatus::up)]);
}

/** CIM_EnabledLogicalElement.EnabledState: 2 is enabled, 3 disabled. */
std::optional<UInt16> enabledState(std::optional<bool> isEnabled) {
    return isEnabled ? std::optional<UInt16>(*isEnabled ? 2 : 3) : std::nullopt;
}

/**
 * IANAifType of a hardware type. Bridges, bonds, VLANs and most wireless interfaces report Ethernet.
 * Interfaces without a hardware header, such as tun and WireGuard, are "other".
 */
std::optional<UInt16> interfaceType(std::optional<UInt16> hardware) {
    const UInt16 other = 1;
    if (!hardware)
        return std::nullopt;
    switch (*hardware) {
    case ARPHRD_ETHER:
        return UInt16{6}; // ethernetCsmacd
    case ARPHRD_PPP:
        return UInt16{23}; // ppp
    case ARPHRD_LOOPBACK:
        return UInt16{24}; // softwareLoopback
    case ARPHRD_IEEE80211:
    case ARPHRD_IEEE80211_PRISM:
    case ARPHRD_IEEE80211_RADIOTAP:
        return UInt16{71}; // ieee80211
    case ARPHRD_TUNNEL:
    case ARPHRD_TUNNEL6:
    case ARPHRD_SIT:
    case ARPHRD_IPGRE:
    case ARPHRD_IP6GRE:
        return UInt16{131}; // tunnel
    case ARPHRD_INFINIBAND:
        return UInt16{199}; // infiniband
    default:
        return other;
    }
}

InstanceBuilder lanEndpointKeys(const NetworkInterface& interface,
                                const std::optional<std::string>& hostName) {
    InstanceBuilder instance(lanEndpointClass);
    instance.set("SystemCreationClassName", CIMValue("QAV_System"))
        .set("SystemName", hostName)
        .set("CreationClassName", CIMValue(lanEndpointClass.name))
        .set("Name", CIMValue(interface.name.c_str()));
    return instance;
}

CIMInstance lanEndpointInstance(const NetworkInterface& interface,
                                const std::optional<std::string>& hostName) {
    return lanEndpointKeys(interface, hostName)
        .set("_INDEX", CIMValue(interface.index))
        .set("MACAddress", macAddress(interface.address))
        .set("Description", interface.alias.value_or(interface.name))
        .set("OperationalStatus", operationalStatus(interface.status))
        .set("EnabledState", enabledState(interface.isEnabled))
        .set("Speed", interface.speed)
        .set("MaxDataSize", interface.mtu)
        .set("ProtocolIFType", interfaceType(interface.hardwareType))
        .build();
}

std::unique_ptr<InstanceSource> lanEndpoints(const Host& host) {
    return eachOf(networkInterfaces(host), [hostName = host.name()](const NetworkInterface& each) {
        return lanEndpointInstance(each, hostName);
    });
}

// Linux counts packets of unknown protocols with the other drops, does not count sent multicasts separately,
// and has no file with the length of a queue.
const ClassDeclaration portStatisticsClass{"QAV_NetworkPortStatistics",
                                           {{"InstanceID", CIMDataType::STRING, Role::key},
                                            {"InOctets", CIMDataType::UINT64},
                                            {"InUcastPkts", CIMDataType::UINT64},
                                            {"InNUcastPkts", CIMDataType::UINT64},
                                            {"InDiscards", CIMDataType::UINT64},
                                            {"InErrors", CIMDataType::UINT64},
                                            {"InUnknownProtos", CIMDataType::UINT64},
                                            {"OutOctets", CIMDataType::UINT64},
                                            {"OutUcastPkts", CIMDataType::UINT64},
                                            {"OutNUcastPkts", CIMDataType::UINT64},
                                            {"OutDiscards", CIMDataType::UINT64},
                                            {"OutErrors", CIMDataType::UINT64},
                                            {"OutQLen", CIMDataType::UINT64}}};

InstanceBuilder portStatisticsKeys(const NetworkInterface& interface) {
    InstanceBuilder instance(portStatisticsClass);
    instance.set("InstanceID", CIMValue(interface.name.c_str()));
    return instance;
}

/** Received packets to the interface's own address. Absent if a driver counts more multicasts than packets.
 */
std::optional<UInt64> receivedUnicasts(const InterfaceCounters& counters) {
    if (counters.receivedMulticasts > counters.receivedPackets)
        return std::nullopt;
    return counters.receivedPackets - counters.receivedMulticasts;
}

CIMInstance portStatisticsInstance(const NetworkInterface& interface) {
    InstanceBuilder instance = portStatisticsKeys(interface);
    if (const std::optional<InterfaceCounters>& counters = interface.counters) {
        instance.set("InOctets", CIMValue(counters->receivedBytes))
            .set("InUcastPkts", receivedUnicasts(*counters))
            .set("InNUcastPkts", CIMValue(counters->receivedMulticasts))
            .set("InDiscards", CIMValue(counters->receiveDrops))
            .set("InErrors", CIMValue(counters->receiveErrors))
            .set("OutOctets", CIMValue(counters->sentBytes))
            // All sent packets, so that the sum of unicasts and others is correct.
            .set("OutUcastPkts", CIMValue(counters->sentPackets))
            .set("OutDiscards", CIMValue(counters->sendDrops))
            .set("OutErrors", CIMValue(counters->sendErrors));
    }
    return instance.build();
}

/** Each interface and its counters. No other class of ports is served. */
const ClassDeclaration endpointPortClass =
    associationClass("QAV_LANEndpointNetworkPortAssociation", {"Dependent", "QAV_LANEndpoint"},
                     {"Antecedent", "QAV_NetworkPortStatistics"});

std::vector<References> endpointsAndPorts(const Host& host) {
    const std::optional<std::string> hostName = host.name();
    std::vector<References> pairs;
    for (const NetworkInterface& interface : networkInterfaces(host))
        pairs.emplace_back(pathOf(lanEndpointKeys(interface, hostName).build()),
                           pathOf(portStatisticsKeys(interface).build()));
    return pairs;
}

} // namespace

std::vector<Provider> networkInterfaceProviders(const Host& host) {
    return {
        {&lanEndpointClass, [&host] { return lanEndpoints(host); }},
        {&endpointPortClass, [&host] { return associations(endpointPortClass, endpointsAndPorts(host)); }},
        {&portStatisticsClass, [&host] { return eachOf(networkInterfaces(host), portStatisticsInstance); }},
    };
}

} // namespace cimom
