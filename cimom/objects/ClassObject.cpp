#include "objects/ClassObject.hpp"

#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "types/ObjectData.hpp"

#include <algorithm>
#include <memory>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** A true qualifier of type boolean. */
Qualifier qualifier(const char* name) {
    Int32Array flavors;
    flavors.push_back(Qualifier::NOT_OVERRIDABLE);
    flavors.push_back(Qualifier::TO_SUBCLASS);
    Qualifier result;
    result.name = name;
    result.value = CIMValue(true);
    result.typeName = result.name;
    result.type = CIMDataType(CIMDataType::BOOLEAN);
    result.typeFlavors = flavors;
    result.flavors = flavors;
    return result;
}

CIMProperty property(const ClassDeclaration& owner, const PropertyDeclaration& declared,
                     const ClassDetails& details) {
    OpenWBEM::detail::Shared<Declaration> declaration(new Declaration);
    Declaration& data = declaration.edit();
    data.name = declared.name;
    data.type = declared.dataType();
    if (details.origin)
        data.originClass = owner.name;
    if (details.qualifiers && declared.role == Role::key)
        data.qualifiers.push_back(qualifier("Key"));
    if (details.qualifiers && declared.role == Role::site)
        data.qualifiers.push_back(qualifier("Write"));
    return ObjectAccess::property(std::move(declaration), CIMValue(CIMNULL));
}

bool isKey(const PropertyDeclaration& declared) {
    return declared.role == Role::key;
}

bool isReferenceKey(const PropertyDeclaration& declared) {
    return isKey(declared) && declared.type == CIMDataType::REFERENCE;
}

} // namespace

CIMClass classObject(const ClassDeclaration& declaration, const ClassDetails& details) {
    const std::vector<PropertyDeclaration>& properties = declaration.properties;
    auto data = std::make_unique<CIMClass::Data>();
    data->name = declaration.name;
    data->isKeyed = std::any_of(properties.begin(), properties.end(), isKey);
    data->isAssociation = std::any_of(properties.begin(), properties.end(), isReferenceKey);
    if (data->isAssociation && details.qualifiers)
        data->qualifiers.push_back(qualifier("Association"));
    for (const PropertyDeclaration& declared : properties)
        data->properties.push_back(property(declaration, declared, details));
    return ObjectAccess::object<CIMClass>(data.release());
}

} // namespace cimom
