#include "host/Devices.hpp"

#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux has no object identifiers of devices.
const ClassDeclaration deviceClass{"HR_DEVICE",
                                   {{"DeviceID", CIMDataType::STRING, Role::key},
                                    {"_HR_DEVICE_INDEX", CIMDataType::UINT32},
                                    {"_HR_DEVICE_TYPE", CIMDataType::UINT16},
                                    {"_HR_DEVICE_DESCR", CIMDataType::STRING},
                                    {"_HR_DEVICE_ID", CIMDataType::STRING},
                                    {"_HR_DEVICE_STATUS", CIMDataType::UINT16},
                                    {"_HR_DEVICE_ERRORS", CIMDataType::UINT64}}};

/** Type and name: a disk and an interface may have the same name. */
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

/** A row of hrDeviceTable of RFC 2790. */
CIMInstance deviceInstance(const Device& device) {
    return InstanceBuilder(deviceClass)
        .set("DeviceID", CIMValue(deviceId(device).c_str()))
        .set("_HR_DEVICE_INDEX", CIMValue(device.index))
        .set("_HR_DEVICE_TYPE", CIMValue(static_cast<UInt16>(device.type)))
        .set("_HR_DEVICE_DESCR", CIMValue(device.description.c_str()))
        .set("_HR_DEVICE_STATUS", CIMValue(static_cast<UInt16>(device.status)))
        .set("_HR_DEVICE_ERRORS", device.errors)
        .build();
}

const ClassDeclaration networkClass{"HR_NETWORK",
                                    {{"DeviceID", CIMDataType::STRING, Role::key},
                                     {"_HR_NETWORK_INDEX", CIMDataType::UINT32},
                                     {"_HR_DEVICE_INDEX", CIMDataType::UINT32}}};

/** A row of hrNetworkTable of RFC 2790. */
CIMInstance networkInstance(const IndexedInterface& each) {
    const auto& [interface, deviceIndex] = each;
    return InstanceBuilder(networkClass)
        .set("DeviceID", CIMValue(("network:" + interface.name).c_str()))
        .set("_HR_NETWORK_INDEX", CIMValue(interface.index))
        .set("_HR_DEVICE_INDEX", CIMValue(deviceIndex))
        .build();
}

} // namespace

std::vector<Provider> deviceProviders(const Host& host) {
    return {
        {&deviceClass, [&host] { return eachOf(devices(host), deviceInstance); }},
        {&networkClass, [&host] { return eachOf(indexedInterfaces(host), networkInstance); }},
    };
}

} // namespace cimom
