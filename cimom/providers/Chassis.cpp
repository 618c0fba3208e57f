#include "providers/Modules.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not tell whether the chassis can be replaced in the field, nor its status.
const ClassDeclaration& chassisClass() {
    static const ClassDeclaration declaration{"QAV_K70Chassis",
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
    return declaration;
}

/** One instance: the enclosure of the host, as its firmware describes it (DMI, DSP0134). */
class Chassis : public Provider {
public:
    explicit Chassis(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return chassisClass(); }

    InstanceSource instances() const override {
        InstanceBuilder instance = namedChassis();
        instance.set("Model", dmi("product_name"))
            .set("VendorEquipmentType", dmi("product_family"))
            .set("Version", dmi("chassis_version"))
            .set("SerialNumber", dmi("chassis_serial"))
            .set("Manufacturer", dmi("chassis_vendor"))
            .set("PartNumber", dmi("product_sku"))
            // DSP0134, System Enclosure or Chassis Types: 3 is a desktop, 23 a rack mount chassis.
            .set("PhysicalType", m_host.readNumber<UInt16>(folder + "chassis_type"))
            .set("_INDEX", CIMValue(chassisIndex))
            // RFC 4133, entPhysicalContainedIn: in nothing.
            .set("_CONTAINED_IN", CIMValue(UInt32{0}));
        return only(instance.build());
    }

private:
    /** A text of the firmware; some are readable for root alone. */
    std::optional<std::string> dmi(const char* name) const { return m_host.readLine(folder + name); }

    const std::string folder = "/sys/class/dmi/id/";
    const Host& m_host;
};

} // namespace

InstanceBuilder namedChassis() {
    InstanceBuilder instance(chassisClass());
    // The tag is the same whatever the firmware says and whoever may read that: what the site writes to the
    // instance must find it again.
    instance.set("Tag", CIMValue("Chassis")).set("CreationClassName", CIMValue(chassisClass().name));
    return instance;
}

std::unique_ptr<Provider> makeChassis(const Host& host) {
    return std::make_unique<Chassis>(host);
}

} // namespace cimom
