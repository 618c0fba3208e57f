#include "host/Devices.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** The name of a device with its kind, since a disk and an interface may have the same name. */
std::string deviceId(const Device& device) {
    switch (device.type) {
    case DeviceType::processor:
        return "processor:" + device.name;
    case DeviceType::network:
        return "network:" + device.name;
    case DeviceType::disk:
        break;
    }
    return "disk:" + device.name;
}

/** An instance for each device, as in hrDeviceTable of RFC 2790. */
class HRDevice : public Provider {
public:
    explicit HRDevice(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        return eachOf(devices(m_host), [this](const Device& each) {
            return InstanceBuilder(m_declaration)
                .set("DeviceID", CIMValue(deviceId(each).c_str()))
                .set("_HR_DEVICE_INDEX", CIMValue(each.index))
                .set("_HR_DEVICE_TYPE", CIMValue(static_cast<UInt16>(each.type)))
                .set("_HR_DEVICE_DESCR", CIMValue(each.description.c_str()))
                .set("_HR_DEVICE_STATUS", CIMValue(static_cast<UInt16>(each.status)))
                .set("_HR_DEVICE_ERRORS", each.errors)
                .build();
        });
    }

private:
    // Linux knows no object identifiers of its devices.
    const ClassDeclaration m_declaration{"HR_DEVICE",
                                         {{"DeviceID", CIMDataType::STRING, Role::key},
                                          {"_HR_DEVICE_INDEX", CIMDataType::UINT32},
                                          {"_HR_DEVICE_TYPE", CIMDataType::UINT16},
                                          {"_HR_DEVICE_DESCR", CIMDataType::STRING},
                                          {"_HR_DEVICE_ID", CIMDataType::STRING},
                                          {"_HR_DEVICE_STATUS", CIMDataType::UINT16},
                                          {"_HR_DEVICE_ERRORS", CIMDataType::UINT64}}};
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeHRDevice(const Host& host) {
    return std::make_unique<HRDevice>(host);
}

} // namespace cimom
