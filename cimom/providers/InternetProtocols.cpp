#include "host/InternetProtocols.hpp"

#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"

#include <iterator>

namespace cimom {

using namespace OpenWBEM;

namespace {

const ClassDeclaration tcpEndpointClass{"QAV_TCPProtocolEndpoint",
                                        {{"CreationClassName", CIMDataType::STRING, Role::key},
                                         {"Name", CIMDataType::STRING, Role::key},
                                         {"TimeoutAlgorithm", CIMDataType::UINT16},
                                         {"TimeoutMin", CIMDataType::UINT32},
                                         {"TimeoutMax", CIMDataType::UINT32},
                                         {"MaxConnections", CIMDataType::SINT32},
                                         {"ConnectionState", CIMDataType::UINT16},
                                         {"LocalAddress", CIMDataType::STRING},
                                         {"LocalPort", CIMDataType::UINT32},
                                         {"RemoteAddress", CIMDataType::STRING},
                                         {"RemotePort", CIMDataType::UINT32}}};

InstanceBuilder tcpEndpointKeys(const std::string& name) {
    InstanceBuilder instance(tcpEndpointClass);
    instance.set("CreationClassName", CIMValue(tcpEndpointClass.name)).set("Name", CIMValue(name.c_str()));
    return instance;
}

CIMInstance tcpSettings(const Host& host) {
    const SnmpFile file(host);
    return tcpEndpointKeys("TCP")
        // RFC 4022: tcpRtoAlgorithm; timeouts in milliseconds; -1 if the number of connections is dynamic.
        .set("TimeoutAlgorithm", file.get<UInt16>("Tcp", "RtoAlgorithm"))
        .set("TimeoutMin", file.get<UInt32>("Tcp", "RtoMin"))
        .set("TimeoutMax", file.get<UInt32>("Tcp", "RtoMax"))
        .set("MaxConnections", file.get<Int32>("Tcp", "MaxConn"))
        .build();
}

CIMInstance tcpConnectionInstance(const TCPConnection& connection) {
    return tcpEndpointKeys(connection.name)
        .set("ConnectionState", CIMValue(connection.state))
        .set("LocalAddress", CIMValue(connection.local.address.c_str()))
        .set("LocalPort", CIMValue(UInt32{connection.local.port}))
        .set("RemoteAddress", CIMValue(connection.remote.address.c_str()))
        .set("RemotePort", CIMValue(UInt32{connection.remote.port}))
        .build();
}

/** One instance with the settings of the protocol, then one for each connection. */
class TCPEndpoints : public InstanceSource {
public:
    explicit TCPEndpoints(const Host& host)
        : m_settings(only(tcpSettings(host)))
        , m_connections(eachOf(tcpConnections(host), tcpConnectionInstance)) {}

    CIMInstance next() override {
        const CIMInstance settings = m_settings->next();
        return settings ? settings : m_connections->next();
    }

private:
    const std::unique_ptr<InstanceSource> m_settings;
    const std::unique_ptr<InstanceSource> m_connections;
};

const ClassDeclaration ipEndpointClass{"QAV_IPProtocolEndpoint",
                                       {{"CreationClassName", CIMDataType::STRING, Role::key},
                                        {"Name", CIMDataType::STRING, Role::key},
                                        {"Forwarding", CIMDataType::UINT16},
                                        {"DefaultTTL", CIMDataType::UINT32},
                                        {"ReassemblyTimeout", CIMDataType::UINT32}}};

CIMInstance ipSettings(const Host& host) {
    const SnmpFile file(host);
    return InstanceBuilder(ipEndpointClass)
        .set("CreationClassName", CIMValue(ipEndpointClass.name))
        .set("Name", CIMValue("IP"))
        // RFC 4293, ipForwarding: 1 forwards datagrams, 2 does not.
        .set("Forwarding", file.get<UInt16>("Ip", "Forwarding"))
        .set("DefaultTTL", file.get<UInt32>("Ip", "DefaultTTL"))
        // In seconds. The column ReasmTimeout counts the reassemblies that timed out.
        .set("ReassemblyTimeout", host.readNumber<UInt32>("/proc/sys/net/ipv4/ipfrag_time"))
        .build();
}

/** A counter of a protocol. */
struct Counter {
    const char* property;
    /** Column of /proc/net/snmp; null if Linux does not have this counter. */
    const char* column;
    CIMDataType::Type type = CIMDataType::UINT64;
};

using Counters = std::vector<Counter>;

const Counters tcpCounters = {
    {"ActiveOpens", "ActiveOpens"},
    {"PassiveOpens", "PassiveOpens"},
    {"AttemptFails", "AttemptFails"},
    {"EstabResets", "EstabResets"},
    {"CurrEstab", "CurrEstab", CIMDataType::UINT32},
    {"InSegs", "InSegs"},
    {"OutSegs", "OutSegs"},
    {"RetransSegs", "RetransSegs"},
    {"InErrs", "InErrs"},
    {"OutRsts", "OutRsts"},
};

const Counters udpCounters = {
    {"InDatagrams", "InDatagrams"},
    {"NoPorts", "NoPorts"},
    {"InErrors", "InErrors"},
    {"OutDatagrams", "OutDatagrams"},
};

const Counters ipCounters = {
    {"InReceives", "InReceives"},
    {"InHdrErrors", "InHdrErrors"},
    {"InAddrErrors", "InAddrErrors"},
    {"InForwDatagrams", "ForwDatagrams"},
    {"InUnknownProtos", "InUnknownProtos"},
    {"InDiscards", "InDiscards"},
    {"InDelivers", "InDelivers"},
    {"OutRequests", "OutRequests"},
    {"OutDiscards", "OutDiscards"},
    {"OutNoRoutes", "OutNoRoutes"},
    {"ReassemblyRequired", "ReasmReqds"},
    {"ReassemblyOKs", "ReasmOKs"},
    {"ReassemblyFails", "ReasmFails"},
    {"FragOKs", "FragOKs"},
    {"FragFails", "FragFails"},
    {"FragCreates", "FragCreates"},
    {"RoutingDiscards", nullptr},
};

/** Properties and columns have the same names. */
Counters makeICMPCounters() {
    Counters counters;
    for (const char* const name :
         {"InMsgs",          "InErrors",     "InDestUnreachs", "InTimeExcds",      "InParmProbs",
          "InSrcQuenchs",    "InRedirects",  "InEchos",        "InEchoReps",       "InTimestamps",
          "InTimestampReps", "InAddrMasks",  "InAddrMaskReps", "OutMsgs",          "OutErrors",
          "OutDestUnreachs", "OutTimeExcds", "OutParmProbs",   "OutSrcQuenchs",    "OutRedirects",
          "OutEchos",        "OutEchoReps",  "OutTimestamps",  "OutTimestampReps", "OutAddrMasks",
          "OutAddrMaskReps"})
        counters.push_back({name, name});
    return counters;
}
const Counters icmpCounters = makeICMPCounters();

ClassDeclaration statisticsClass(const char* name, const Counters& counters) {
    ClassDeclaration declaration{name, {{"InstanceID", CIMDataType::STRING, Role::key}}};
    for (const Counter& counter : counters)
        declaration.properties.push_back({counter.property, counter.type});
    return declaration;
}

const ClassDeclaration tcpStatisticsClass = statisticsClass("QAV_TCPStatisticalData", tcpCounters);
const ClassDeclaration udpStatisticsClass = statisticsClass("QAV_UDPStatisticalData", udpCounters);
const ClassDeclaration ipStatisticsClass = statisticsClass("QAV_IPStatisticalData", ipCounters);
const ClassDeclaration icmpStatisticsClass = statisticsClass("QAV_ICMPStatisticalData", icmpCounters);

/**
 * The instance of a class of statistics.
 *
 * @param id value of its key
 * @param protocol name in /proc/net/snmp
 */
CIMInstance statistics(const ClassDeclaration& declaration, const char* id, const char* protocol,
                       const Counters& counters, const Host& host) {
    const SnmpFile file(host);
    InstanceBuilder instance(declaration);
    instance.set("InstanceID", CIMValue(id));
    for (const Counter& counter : counters) {
        if (!counter.column)
            continue;
        if (counter.type == CIMDataType::UINT32)
            instance.set(counter.property, file.get<UInt32>(protocol, counter.column));
        else
            instance.set(counter.property, file.get<UInt64>(protocol, counter.column));
    }
    return instance.build();
}

} // namespace

std::vector<Provider> internetProtocolProviders(const Host& host) {
    return {
        {&tcpEndpointClass, [&host] { return std::make_unique<TCPEndpoints>(host); }},
        {&tcpStatisticsClass,
         [&host] { return only(statistics(tcpStatisticsClass, "TCP", "Tcp", tcpCounters, host)); }},
        {&udpStatisticsClass,
         [&host] { return only(statistics(udpStatisticsClass, "UDP", "Udp", udpCounters, host)); }},
        {&ipEndpointClass, [&host] { return only(ipSettings(host)); }},
        {&ipStatisticsClass,
         [&host] { return only(statistics(ipStatisticsClass, "IP", "Ip", ipCounters, host)); }},
        {&icmpStatisticsClass,
         [&host] { return only(statistics(icmpStatisticsClass, "ICMP", "Icmp", icmpCounters, host)); }},
    };
}

} // namespace cimom
