#include "providers/NetworkPorts.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux counts packets of protocols that nobody wants with the other drops, does not tell group addresses
// apart in what is sent, and shows the length of a queue in no file.
const ClassDeclaration& portStatisticsClass() {
    static const ClassDeclaration declaration{"QAV_NetworkPortStatistics",
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
    return declaration;
}

/** Received packets to the interface's own address; some drivers count more multicasts than packets. */
std::optional<UInt64> receivedUnicasts(const InterfaceCounters& counters) {
    if (counters.receivedMulticasts > counters.receivedPackets)
        return std::nullopt;
    return counters.receivedPackets - counters.receivedMulticasts;
}

CIMInstance portStatistics(const NetworkInterface& interface) {
    InstanceBuilder instance = namedPortStatistics(interface);
    if (const std::optional<InterfaceCounters>& counters = interface.counters) {
        instance.set("InOctets", CIMValue(counters->receivedBytes))
            .set("InUcastPkts", receivedUnicasts(*counters))
            .set("InNUcastPkts", CIMValue(counters->receivedMulticasts))
            .set("InDiscards", CIMValue(counters->receiveDrops))
            .set("InErrors", CIMValue(counters->receiveErrors))
            .set("OutOctets", CIMValue(counters->sentBytes))
            // All that was sent, so that the sum over both kinds of packets is right.
            .set("OutUcastPkts", CIMValue(counters->sentPackets))
            .set("OutDiscards", CIMValue(counters->sendDrops))
            .set("OutErrors", CIMValue(counters->sendErrors));
    }
    return instance.build();
}

/** An instance for each network interface: what it has counted. */
class NetworkPortStatistics : public Provider {
public:
    explicit NetworkPortStatistics(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return portStatisticsClass(); }
    InstanceSource instances() const override { return eachOf(networkInterfaces(m_host), portStatistics); }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedPortStatistics(const NetworkInterface& interface) {
    InstanceBuilder instance(portStatisticsClass());
    instance.set("InstanceID", CIMValue(interface.name.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeNetworkPortStatistics(const Host& host) {
    return std::make_unique<NetworkPortStatistics>(host);
}

} // namespace cimom
