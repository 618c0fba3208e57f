#include "host/Modules.hpp"

#include "providers/Association.hpp"
#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"
#include "schema/Namespace.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// The firmware does not report whether an enclosure can be replaced in the field, nor its status.
const ClassDeclaration expansionChassisClass{"QAV_K70ExpansionChassis",
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

CIMInstance expansionChassisInstance(const ExpansionChassis& each) {
    const UInt32 number = each.index - firstExpansionChassisIndex + 1;
    InstanceBuilder instance(expansionChassisClass);
    instance.set("Tag", CIMValue(("ExpansionChassis-" + std::to_string(number)).c_str()))
        .set("CreationClassName", CIMValue(expansionChassisClass.name))
        .set("Version", each.version)
        .set("SerialNumber", each.serialNumber)
        .set("Manufacturer", each.manufacturer)
        .set("PartNumber", each.partNumber)
        .set("_INDEX", CIMValue(each.index));
    if (each.type)
        instance.set("PhysicalType", CIMValue(UInt16{*each.type}));
    return instance.build();
}

// No file of a Linux host holds the status of a module.
const ClassDeclaration moduleClass{"QAV_XRULogicalModule",
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

InstanceBuilder moduleKeys(const Module& module) {
    InstanceBuilder instance(moduleClass);
    instance.set("CreationClassName", CIMValue(moduleClass.name))
        .set("DeviceID", CIMValue(module.deviceID.c_str()));
    return instance;
}

CIMInstance moduleInstance(const Module& module) {
    const UInt16 isModule = 9; // RFC 4133, PhysicalClass: module
    return moduleKeys(module)
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

const ClassDeclaration locationClass{
    "QAV_CoreTelephony_ModuleLocation",
    {{"Key", CIMDataType::STRING, Role::key}, {"LocnXruType", CIMDataType::STRING}}};

InstanceBuilder locationKeys(const Module& module) {
    InstanceBuilder instance(locationClass);
    instance.set("Key", CIMValue(module.location.c_str()));
    return instance;
}

CIMInstance locationInstance(const Module& module) {
    return locationKeys(module).set("LocnXruType", CIMValue(module.kind)).build();
}

/** Each module is in the chassis. */
const ClassDeclaration dependencyClass = associationClass(
    "QAV_XRUPackageDependency", {"Dependent", "QAV_XRULogicalModule"}, {"Antecedent", "QAV_K70Chassis"});

std::vector<References> modulesAndChassis(const Host& host) {
    std::vector<References> pairs;
    for (const Module& module : modules(host))
        pairs.emplace_back(pathOf(moduleKeys(module).build()), chassisPath());
    return pairs;
}

/** Each module is in its location. */
const ClassDeclaration moduleLocationClass =
    associationClass("QAV_XRULogicalModuleLocation", {"SameElement", "QAV_CoreTelephony_ModuleLocation"},
                     {"SystemElement", "QAV_XRULogicalModule"});

std::vector<References> locationsAndModules(const Host& host) {
    std::vector<References> pairs;
    for (const Module& module : modules(host))
        pairs.emplace_back(pathOf(locationKeys(module).build()), pathOf(moduleKeys(module).build()));
    return pairs;
}

} // namespace

std::vector<Provider> moduleProviders(const Host& host) {
    return {
        {&expansionChassisClass,
         [&host] { return eachOf(expansionChassis(host), expansionChassisInstance); }},
        {&moduleClass, [&host] { return eachOf(modules(host), moduleInstance); }},
        {&dependencyClass, [&host] { return associations(dependencyClass, modulesAndChassis(host)); }},
        {&moduleLocationClass,
         [&host] { return associations(moduleLocationClass, locationsAndModules(host)); }},
        {&locationClass, [&host] { return eachOf(modules(host), locationInstance); }},
    };
}

} // namespace cimom
