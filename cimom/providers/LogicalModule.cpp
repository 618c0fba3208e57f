#include "providers/Modules.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// No file of a Linux host tells the status of a module.
const ClassDeclaration& logicalModuleClass() {
    static const ClassDeclaration declaration{"QAV_XRULogicalModule",
                                              {{"CreationClassName", CIMDataType::STRING, Role::key},
                                               {"DeviceID", CIMDataType::STRING, Role::key},
                                               {"VendorEquipmentType", CIMDataType::STRING},
                                               {"Version", CIMDataType::STRING},
                                               {"SerialNumber", CIMDataType::STRING},
                                               {"Manufacturer", CIMDataType::STRING},
                                               {"PartNumber", CIMDataType::STRING},
                                               {"OtherIdentifyingInfo", CIMDataType::STRING, Role::site},
                                               {"UserTracking", CIMDataType::STRING, Role::site},
                                               {"CanBeFRUed", CIMDataType::BOOLEAN},
                                               {"PhysicalType", CIMDataType::UINT16},
                                               {"_INDEX", CIMDataType::UINT32},
                                               {"_CONTAINED_IN", CIMDataType::UINT32},
                                               {"PresentStatus", CIMDataType::STRING}}};
    return declaration;
}

CIMInstance logicalModule(const Module& module) {
    const UInt16 isModule = 9; // RFC 4133, PhysicalClass: module
    return namedModule(module)
        .set("VendorEquipmentType", module.equipmentType)
        .set("Version", module.version)
        .set("SerialNumber", module.serialNumber)
        .set("Manufacturer", module.manufacturer)
        .set("PartNumber", module.partNumber)
        .set("CanBeFRUed", module.isReplaceable)
        .set("PhysicalType", CIMValue(isModule))
        .set("_INDEX", CIMValue(module.index))
        .set("_CONTAINED_IN", CIMValue(chassisIndex))
        .build();
}

/** An instance for each memory module and each expansion card. */
class LogicalModule : public Provider {
public:
    explicit LogicalModule(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return logicalModuleClass(); }
    InstanceSource instances() const override { return eachOf(modules(m_host), logicalModule); }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedModule(const Module& module) {
    InstanceBuilder instance(logicalModuleClass());
    instance.set("CreationClassName", CIMValue(logicalModuleClass().name))
        .set("DeviceID", CIMValue(module.deviceID.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeLogicalModule(const Host& host) {
    return std::make_unique<LogicalModule>(host);
}

} // namespace cimom
