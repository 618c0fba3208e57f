#include "providers/Subjects.hpp"

#include "host/Modules.hpp"
#include "schema/InstanceBuilder.hpp"
#include "schema/Namespace.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not report whether the chassis can be replaced in the field, nor its status.
const ClassDeclaration chassisClass{"QAV_K70Chassis",
                                    {{"Tag", CIMDataType::STRING, Role::key},
                                     {"CreationClassName", CIMDataType::STRING, Role::key},
                                     {"Model", CIMDataType::STRING},
                                     {"VendorEquipmentType", CIMDataType::STRING},
                                     {"ElementName", CIMDataType::STRING, Role::site},
                                     {"Version", CIMDataType::STRING},
                                     {"SerialNumber", CIMDataType::STRING},
                                     {"Manufacturer", CIMDataType::STRING},
                                     {"PartNumber", CIMDataType::STRING},
                                     {"OtherIdentifyingInfo", CIMDataType::STRING, Role::site},
                                     {"UserTracking", CIMDataType::STRING, Role::site},
                                     {"CanBeFRUed", CIMDataType::BOOLEAN},
                                     {"PhysicalType", CIMDataType::UINT16},
                                     {"Location", CIMDataType::STRING, Role::site},
                                     {"_INDEX", CIMDataType::UINT32},
                                     {"_CONTAINED_IN", CIMDataType::UINT32},
                                     {"PresentStatus", CIMDataType::STRING}}};

/** The chassis with its keys alone. They are constant, so that written values find the instance again. */
InstanceBuilder chassisKeys() {
    InstanceBuilder instance(chassisClass);
    instance.set("Tag", CIMValue("Chassis")).set("CreationClassName", CIMValue(chassisClass.name));
    return instance;
}

/** The enclosure of the host as its firmware describes it (DMI, DSP0134). Some files only root can read. */
CIMInstance chassis(const Host& host) {
    const std::string directory = "/sys/class/dmi/id/";
    const auto dmi = [&](const char* name) { return host.readLine(directory + name); };
    return chassisKeys()
        .set("Model", dmi("product_name"))
        .set("VendorEquipmentType", dmi("product_family"))
        .set("Version", dmi("chassis_version"))
        .set("SerialNumber", dmi("chassis_serial"))
        .set("Manufacturer", dmi("chassis_vendor"))
        .set("PartNumber", dmi("product_sku"))
        // DSP0134, System Enclosure or Chassis Types: 3 is a desktop, 23 a rack mount chassis.
        .set("PhysicalType", host.readNumber<UInt16>(directory + "chassis_type"))
        .set("_INDEX", CIMValue(chassisIndex))
        // RFC 4133, entPhysicalContainedIn: 0 is not contained in anything.
        .set("_CONTAINED_IN", CIMValue(UInt32{0}))
        .build();
}

} // namespace

CIMObjectPath chassisPath() {
    return pathOf(chassisKeys().build());
}

std::vector<Provider> chassisProviders(const Host& host) {
    return {{&chassisClass, [&host] { return only(chassis(host)); }}};
}

} // namespace cimom
