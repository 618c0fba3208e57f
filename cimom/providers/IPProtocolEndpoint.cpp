#include "host/SnmpFile.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** One instance: how this host handles IP datagrams. */
class IPProtocolEndpoint : public Provider {
public:
    explicit IPProtocolEndpoint(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        const SnmpFile file(m_host);
        InstanceBuilder instance(m_declaration);
        instance.set("CreationClassName", CIMValue(m_declaration.name))
            .set("Name", CIMValue("IP"))
            // RFC 4293, ipForwarding: 1 forwards datagrams, 2 does not.
            .set("Forwarding", file.get<UInt16>("Ip", "Forwarding"))
            .set("DefaultTTL", file.get<UInt32>("Ip", "DefaultTTL"))
            // In seconds. The column ReasmTimeout counts the reassemblies that timed out.
            .set("ReassemblyTimeout", m_host.readNumber<UInt32>("/proc/sys/net/ipv4/ipfrag_time"));
        return only(instance.build());
    }

private:
    const ClassDeclaration m_declaration{"QAV_IPProtocolEndpoint",
                                         {{"CreationClassName", CIMDataType::STRING, Role::key},
                                          {"Name", CIMDataType::STRING, Role::key},
                                          {"Forwarding", CIMDataType::UINT16},
                                          {"DefaultTTL", CIMDataType::UINT32},
                                          {"ReassemblyTimeout", CIMDataType::UINT32}}};
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeIPProtocolEndpoint(const Host& host) {
    return std::make_unique<IPProtocolEndpoint>(host);
}

} // namespace cimom
