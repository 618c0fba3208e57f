#include "host/SnmpFile.hpp"
#include "host/TCPConnections.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** First an instance with the settings of the protocol, then one for each connection. */
class TCPProtocolEndpoint : public Provider {
public:
    explicit TCPProtocolEndpoint(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        return chained(only(settings()), eachOf(tcpConnections(m_host), [this](const TCPConnection& each) {
                           return connection(each);
                       }));
    }

private:
    CIMInstance settings() const {
        const SnmpFile file(m_host);
        return named("TCP")
            // RFC 4022: tcpRtoAlgorithm, milliseconds, milliseconds, -1 for a number of connections that
            // varies.
            .set("TimeoutAlgorithm", file.get<UInt16>("Tcp", "RtoAlgorithm"))
            .set("TimeoutMin", file.get<UInt32>("Tcp", "RtoMin"))
            .set("TimeoutMax", file.get<UInt32>("Tcp", "RtoMax"))
            .set("MaxConnections", file.get<Int32>("Tcp", "MaxConn"))
            .build();
    }

    CIMInstance connection(const TCPConnection& each) const {
        return named(each.name)
            .set("ConnectionState", CIMValue(each.state))
            .set("LocalAddress", CIMValue(each.local.address.c_str()))
            .set("LocalPort", CIMValue(UInt32{each.local.port}))
            .set("RemoteAddress", CIMValue(each.remote.address.c_str()))
            .set("RemotePort", CIMValue(UInt32{each.remote.port}))
            .build();
    }

    InstanceBuilder named(const std::string& name) const {
        InstanceBuilder instance(m_declaration);
        instance.set("CreationClassName", CIMValue(m_declaration.name)).set("Name", CIMValue(name.c_str()));
        return instance;
    }

    const ClassDeclaration m_declaration{"QAV_TCPProtocolEndpoint",
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
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeTCPProtocolEndpoint(const Host& host) {
    return std::make_unique<TCPProtocolEndpoint>(host);
}

} // namespace cimom
