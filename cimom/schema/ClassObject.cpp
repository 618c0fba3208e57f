#include "schema/ClassObject.hpp"

#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "agent/Catalogue.hpp"
#include "types/ObjectData.hpp"

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

Qualifier qualifier(const char* name, const CIMValue& value,
                    std::initializer_list<Qualifier::Flavor> flavors) {
    Qualifier result;
    result.name = name;
    result.value = value;
    result.typeName = result.name;
    result.type = value.isArray() ? CIMDataType(CIMDataType::STRING, -1) : CIMDataType(value.getType());
    for (const Qualifier::Flavor flavor : flavors)
        result.flavors.push_back(flavor);
    result.typeFlavors = result.flavors;
    return result;
}

Qualifier trueQualifier(const char* name) {
    return qualifier(name, CIMValue(true), {Qualifier::NOT_OVERRIDABLE, Qualifier::TO_SUBCLASS});
}

Qualifier textQualifier(const char* name, const std::string& text) {
    return qualifier(name, CIMValue(String(text.c_str())), {Qualifier::TO_SUBCLASS, Qualifier::TRANSLATABLE});
}

/** ValueMap has the codes of a property, Values their names, in the same order. */
void appendValueNames(QualifierArray& qualifiers, const agent::ValueNames& values) {
    StringArray codes;
    StringArray names;
    for (const agent::ValueName& each : values) {
        codes.push_back(std::to_string(each.value).c_str());
        names.push_back(each.name);
    }
    qualifiers.push_back(qualifier("ValueMap", CIMValue(codes), {Qualifier::TO_SUBCLASS}));
    qualifiers.push_back(
        qualifier("Values", CIMValue(names), {Qualifier::TO_SUBCLASS, Qualifier::TRANSLATABLE}));
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
    std::string subjects;
    for (const long group : agent::groupsOfClass(declaration.name))
        subjects += (subjects.empty() ? "" : " ") + std::string(agent::classOf(group).subject) + ".";
    if (!subjects.empty())
        qualifiers.push_back(textQualifier("Description", subjects));
    return qualifiers;
}

QualifierArray qualifiersOf(const ClassDeclaration& owner, const PropertyDeclaration& declared) {
    QualifierArray qualifiers;
    if (declared.role == Role::key)
        qualifiers.push_back(trueQualifier("Key"));
    if (declared.role == Role::site)
        qualifiers.push_back(trueQualifier("Write"));
    const agent::Attribute* const meaning = agent::findAttribute(owner.name, declared.name);
    if (!meaning)
        return qualifiers;
    qualifiers.push_back(textQualifier("Description", meaning->description));
    if (*meaning->unit != '\0')
        qualifiers.push_back(textQualifier("Units", meaning->unit));
    if (!meaning->values.empty())
        appendValueNames(qualifiers, meaning->values);
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
        data.qualifiers = qualifiersOf(owner, declared);
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
