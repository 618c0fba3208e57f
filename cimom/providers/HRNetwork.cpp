#include "host/Devices.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

using IndexedInterface = std::pair<NetworkInterface, UInt32>;

/** An instance for each network interface, as in hrNetworkTable of RFC 2790. */
class HRNetwork : public Provider {
public:
    explicit HRNetwork(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        return eachOf(indexedInterfaces(m_host), [this](const IndexedInterface& each) {
            const auto& [interface, deviceIndex] = each;
            return InstanceBuilder(m_declaration)
                .set("DeviceID", CIMValue(("network:" + interface.name).c_str()))
                .set("_HR_NETWORK_INDEX", CIMValue(interface.index))
                .set("_HR_DEVICE_INDEX", CIMValue(deviceIndex))
                .build();
        });
    }

private:
    const ClassDeclaration m_declaration{"HR_NETWORK",
                                         {{"DeviceID", CIMDataType::STRING, Role::key},
                                          {"_HR_NETWORK_INDEX", CIMDataType::UINT32},
                                          {"_HR_DEVICE_INDEX", CIMDataType::UINT32}}};
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeHRNetwork(const Host& host) {
    return std::make_unique<HRNetwork>(host);
}

} // namespace cimom
