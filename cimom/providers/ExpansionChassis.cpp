#include "host/ExpansionChassis.hpp"
#include "host/Module.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** An instance for each enclosure that belongs to the host beside its chassis. */
class ExpansionChassisProvider : public Provider {
public:
    explicit ExpansionChassisProvider(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        return eachOf(expansionChassis(m_host),
                      [this](const ExpansionChassis& each) { return instance(each); });
    }

private:
    CIMInstance instance(const ExpansionChassis& each) const {
        const UInt32 number = each.index - firstExpansionChassisIndex + 1;
        InstanceBuilder instance(m_declaration);
        instance.set("Tag", CIMValue(("ExpansionChassis-" + std::to_string(number)).c_str()))
            .set("CreationClassName", CIMValue(m_declaration.name))
            .set("Version", each.version)
            .set("SerialNumber", each.serialNumber)
            .set("Manufacturer", each.manufacturer)
            .set("PartNumber", each.partNumber)
            .set("_INDEX", CIMValue(each.index));
        if (each.type)
            instance.set("PhysicalType", CIMValue(UInt16{*each.type}));
        return instance.build();
    }

    // The firmware does not tell whether it can be replaced in the field, nor its status.
    const ClassDeclaration m_declaration{"QAV_K70ExpansionChassis",
                                         {{"Tag", CIMDataType::STRING, Role::key},
                                          {"CreationClassName", CIMDataType::STRING, Role::key},
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
                                          {"_INDEX", CIMDataType::UINT32},
                                          {"PresentStatus", CIMDataType::STRING}}};
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeExpansionChassis(const Host& host) {
    return std::make_unique<ExpansionChassisProvider>(host);
}

} // namespace cimom
