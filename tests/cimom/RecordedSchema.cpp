#include "RecordedSchema.hpp"

#include "Understood.hpp"
#include "openwbem/Record.hpp"
#include "schema/InstanceBuilder.hpp"
#include "schema/Namespace.hpp"

#include <algorithm>
#include <memory>
#include <utility>

using namespace cimom;
using OpenWBEM::CIMInstance;

namespace {

using Type = OpenWBEM::CIMDataType;
using Instances = std::vector<CIMInstance>;

/** A class and its recorded instances. */
struct RecordedClass {
    ClassDeclaration declaration;
    Instances instances;

    /** A recorded instance in the form of the declaration. */
    CIMInstance declared(const CIMInstance& recorded) const {
        InstanceBuilder builder(declaration);
        for (const OpenWBEM::CIMProperty& property : recorded.getProperties())
            builder.set(property.getName().c_str(), property.getValue());
        return builder.build();
    }

    /** Replaces the instance with the same keys. */
    void replace(const CIMInstance& newer) {
        const CIMInstance instance = declared(newer);
        for (CIMInstance& each : instances) {
            if (pathOf(each) == pathOf(instance))
                each = instance;
        }
    }
};

bool isOf(const CIMInstance& instance, const ClassDeclaration& declaration) {
    return instance.getClassName() == declaration.name;
}

/** The instances in the recorded enumeration of a class, without those of subclasses. */
Instances recordedInstances(const ClassDeclaration& declaration) {
    const std::string name = declaration.name;
    const std::string conversation = name == "QAV_Empty" ? "enum_noinstances" : "enum_" + name.substr(4);
    const record::Conversation enumeration{"ow-uds-anon/" + conversation};
    Instances all = understood(enumeration.sent(), enumeration.received()).instances;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [&](const CIMInstance& each) { return !isOf(each, declaration); }),
              all.end());
    return all;
}

} // namespace

std::vector<ClassDeclaration> recordedClasses() {
    const auto key = Role::key;
    const auto site = Role::site;
    const auto state = Role::state;
    return {
        {"QAV_OperatingSystem",
         {{"CreationClassName", Type::STRING, key},
          {"Name", Type::STRING, key},
          {"LastBootUpTime", Type::DATETIME},
          {"LocalDateTime", Type::DATETIME},
          {"NumberOfUsers", Type::UINT32},
          {"NumberOfProcesses", Type::UINT32},
          {"MaxNumberOfProcesses", Type::UINT32}}},
        {"QAV_K70Chassis",
         {{"Tag", Type::STRING, key},
          {"CreationClassName", Type::STRING, key},
          {"Model", Type::STRING, site},
          {"ElementName", Type::STRING, site},
          {"Version", Type::STRING},
          {"SerialNumber", Type::STRING},
          {"Manufacturer", Type::STRING},
          {"PartNumber", Type::STRING},
          {"CanBeFRUed", Type::BOOLEAN},
          {"OtherIdentifyingInfo", Type::STRING, state, true},
          {"VendorEquipmentType", Type::STRING}}},
        {"QAV_MediaAccessDevice",
         {{"DeviceID", Type::STRING, key},
          {"Capabilities", Type::UINT16, state, true},
          {"MaxMediaSize", Type::UINT64},
          {"OperationalStatus", Type::UINT16, state, true},
          {"StorageType", Type::UINT16}}},
        {"QAV_AllTypes",
         {{"Id", Type::STRING, key},
          {"U8", Type::UINT8},
          {"S8", Type::SINT8},
          {"U16", Type::UINT16},
          {"S16", Type::SINT16},
          {"U32", Type::UINT32},
          {"S32", Type::SINT32},
          {"U64", Type::UINT64},
          {"S64", Type::SINT64},
          {"R32", Type::REAL32},
          {"R64", Type::REAL64},
          {"B", Type::BOOLEAN},
          {"C16", Type::CHAR16},
          {"S", Type::STRING},
          {"DT", Type::DATETIME},
          {"Interval", Type::DATETIME}}},
        {"QAV_AllArrays",
         {{"Id", Type::STRING, key},
          {"U8A", Type::UINT8, state, true},
          {"S8A", Type::SINT8, state, true},
          {"U16A", Type::UINT16, state, true},
          {"S16A", Type::SINT16, state, true},
          {"U32A", Type::UINT32, state, true},
          {"S32A", Type::SINT32, state, true},
          {"U64A", Type::UINT64, state, true},
          {"S64A", Type::SINT64, state, true},
          {"R32A", Type::REAL32, state, true},
          {"R64A", Type::REAL64, state, true},
          {"BA", Type::BOOLEAN, state, true},
          {"C16A", Type::CHAR16, state, true},
          {"SA", Type::STRING, state, true},
          {"DTA", Type::DATETIME, state, true}}},
        {"QAV_Base", {{"Id", Type::STRING, key}, {"BaseProp", Type::UINT32}}},
        {"QAV_Empty", {{"Id", Type::STRING, key}, {"N", Type::UINT32}}},
        {"QAV_Many",
         {{"Index", Type::UINT32, key},
          {"Name", Type::STRING},
          {"Size", Type::UINT64},
          {"Flag", Type::BOOLEAN},
          {"States", Type::UINT16, state, true},
          {"When", Type::DATETIME},
          {"Ratio", Type::REAL64}}},
    };
}

ObjectManager recordedManager(std::vector<ClassDeclaration> classes, const Instances& newer) {
    std::vector<Provider> providers;
    for (ClassDeclaration& declaration : classes) {
        const auto recorded = std::make_shared<RecordedClass>();
        recorded->declaration = std::move(declaration);
        for (const CIMInstance& instance : recordedInstances(recorded->declaration))
            recorded->instances.push_back(recorded->declared(instance));
        for (const CIMInstance& instance : newer) {
            if (isOf(instance, recorded->declaration))
                recorded->replace(instance);
        }
        providers.push_back({&recorded->declaration, [recorded] {
                                 return eachOf(recorded->instances,
                                               [](const CIMInstance& instance) { return instance; });
                             }});
    }
    return ObjectManager(std::move(providers));
}

ObjectManager recordedManagerOfShortReplies() {
    std::vector<ClassDeclaration> classes = recordedClasses();
    classes.erase(
        std::remove_if(classes.begin(), classes.end(),
                       [](const ClassDeclaration& each) { return std::string(each.name) == "QAV_Many"; }),
        classes.end());
    return recordedManager(std::move(classes));
}
