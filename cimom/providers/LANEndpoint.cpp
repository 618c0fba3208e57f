#include "providers/NetworkPorts.hpp"
#include "providers/Providers.hpp"

#include <linux/if_arp.h>

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not tell when the state of an interface last changed.
const ClassDeclaration& lanEndpointClass() {
    static const ClassDeclaration declaration{"QAV_LANEndpoint",
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
    return declaration;
}

/** CIM_LANEndpoint.MACAddress: twelve digits. Addresses of another size are of another kind. */
std::optional<std::string> macAddress(const std::optional<std::string>& address) {
    const std::size_t octets = 6;
    if (!address || address->size() != octets * 3 - 1)
        return std::nullopt;
    std::string digits;
    for (std::size_t i = 0; i < octets; ++i) {
        const std::string octet = address->substr(3 * i, 2);
        const bool endsWell = i + 1 == octets || (*address)[3 * i + 2] == ':';
        if (!endsWell || !number<UInt8>(octet, 16))
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
        0,  // unknown, as of interfaces whose driver does not tell: unknown
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
 * IANAifType for a kind of hardware. Bridges, bonds, VLANs and most wireless interfaces show themselves as
 * Ethernet. Interfaces without a hardware header, such as tun and WireGuard, are "other" with the rest.
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

/** An instance for each network interface. */
class LANEndpoint : public Provider {
public:
    explicit LANEndpoint(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return lanEndpointClass(); }

    InstanceSource instances() const override {
        return eachOf(networkInterfaces(m_host), [name = m_host.name()](const NetworkInterface& each) {
            return namedLANEndpoint(each, name)
                .set("_INDEX", CIMValue(each.index))
                .set("MACAddress", macAddress(each.address))
                .set("Description", each.alias.value_or(each.name))
                .set("OperationalStatus", operationalStatus(each.status))
                .set("EnabledState", enabledState(each.isEnabled))
                .set("Speed", each.speed)
                .set("MaxDataSize", each.mtu)
                .set("ProtocolIFType", interfaceType(each.hardwareType))
                .build();
        });
    }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedLANEndpoint(const NetworkInterface& interface,
                                 const std::optional<std::string>& systemName) {
    InstanceBuilder instance(lanEndpointClass());
    instance.set("SystemCreationClassName", CIMValue("QAV_System"))
        .set("SystemName", systemName)
        .set("CreationClassName", CIMValue(lanEndpointClass().name))
        .set("Name", CIMValue(interface.name.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeLANEndpoint(const Host& host) {
    return std::make_unique<LANEndpoint>(host);
}

} // namespace cimom
