#include "schema/ClassObject.hpp"

#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "types/ObjectData.hpp"

#include <algorithm>
#include <memory>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** A qualifier of type boolean with the value true. */
Qualifier trueQualifier(const char* name) {
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

bool isReferenceKey(const PropertyDeclaration& declared) {
    return declared.role == Role::key && declared.type == CIMDataType::REFERENCE;
}

bool isAssociation(const ClassDeclaration& declaration) {
    return std::any_of(declaration.properties.begin(), declaration.properties.end(), isReferenceKey);
}

// The qualifiers of a class and of its properties come from these two functions and from nowhere else.

QualifierArray qualifiersOf(const ClassDeclaration& declaration) {
    QualifierArray qualifiers;
    if (isAssociation(declaration))
        qualifiers.push_back(trueQualifier("Association"));
    return qualifiers;
}

QualifierArray qualifiersOf(const PropertyDeclaration& declared) {
    QualifierArray qualifiers;
    if (declared.role == Role::key)
        qualifiers.push_back(trueQualifier("Key"));
    if (declared.role == Role::site)
        qualifiers.push_back(trueQualifier("Write"));
    return qualifiers;
}

CIMProperty property(const ClassDeclaration& owner, const PropertyDeclaration& declared,
                     const ClassDetails& details) {
    OpenWBEM::detail::Shared<Declaration> declaration(new Declaration);
    Declaration& data = declaration.edit();
    data.name = declared.name;
    data.type = declared.dataType();
    if (details.origin)
        data.originClass = owner.name;
    if (details.qualifiers)
        data.qualifiers = qualifiersOf(declared);
    return ObjectAccess::property(std::move(declaration), CIMValue(CIMNULL));
}

} // namespace

CIMClass classObject(const ClassDeclaration& declaration, const ClassDetails& details) {
    const std::vector<PropertyDeclaration>& properties = declaration.properties;
    auto data = std::make_unique<CIMClass::Data>();
    data->name = declaration.name;
    data->isKeyed = std::any_of(properties.begin(), properties.end(),
                                [](const PropertyDeclaration& each) { return each.role == Role::key; });
    data->isAssociation = isAssociation(declaration);
    if (details.qualifiers)
        data->qualifiers = qualifiersOf(declaration);
    for (const PropertyDeclaration& declared : properties)
        data->properties.push_back(property(declaration, declared, details));
    return ObjectAccess::object<CIMClass>(data.release());
}

} // namespace cimom
