#include "schema/ServedClasses.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMProperty.hpp"
#include "schema/Namespace.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** The value of the first property of a name that has one; else null. */
CIMValue valueOf(const CIMPropertyArray& properties, const CIMName& name) {
    for (const CIMProperty& property : properties) {
        if (property && property.getValue() && CIMName(property.getName()) == name)
            return property.getValue();
    }
    return CIMValue(CIMNULL);
}

/**
 * The path whose keys, in declared order, have the values of the properties of the same names. Throws
 * CIMException INVALID_PARAMETER if a key has no value.
 */
CIMObjectPath pathWithKeys(const CIMPropertyArray& properties, const ClassDeclaration& declaration) {
    CIMObjectPath path(CIMName(declaration.name), String(servedNamespace));
    const PropertyDeclaration* missing = nullptr;
    for (const PropertyDeclaration& declared : declaration.properties) {
        if (declared.role != Role::key)
            continue;
        const CIMValue value = declared.converted(valueOf(properties, declared.name));
        if (value)
            path.setKeyValue(declared.name, value);
        else if (!missing)
            missing = &declared;
    }
    if (missing) {
        const String why =
            "object path (" + path.toString() + ") has key (" + missing->name + ") with NULL value";
        OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, why.c_str());
    }
    return path;
}

} // namespace

ServedClasses::ServedClasses(const std::vector<const ClassDeclaration*>& classes) {
    for (const ClassDeclaration* const declaration : classes)
        m_classes[declaration->name] = declaration;
}

const ClassDeclaration* ServedClasses::find(const CIMName& name) const {
    const auto found = m_classes.find(name);
    return found == m_classes.end() ? nullptr : found->second;
}

CIMObjectPath ServedClasses::canonical(const CIMObjectPath& path) const {
    const ClassDeclaration* const declaration = find(path.getClassName());
    if (!declaration)
        OW_THROWCIMMSG(CIMException::INVALID_CLASS, path.getClassName().c_str());
    CIMPropertyArray keys;
    for (const CIMProperty& key : path.getKeys()) {
        const PropertyDeclaration* const declared = declaration->find(key.getName());
        if (!declared || !key.getValue())
            continue;
        const bool isReference = declared->type == CIMDataType::REFERENCE;
        keys.push_back(
            CIMProperty(declared->name, isReference ? canonicalReference(key.getValue()) : key.getValue()));
    }
    return pathWithKeys(keys, *declaration);
}

/** Of a key. Clients may send a reference as a string. */
CIMValue ServedClasses::canonicalReference(const CIMValue& value) const {
    if (value.getType() == CIMDataType::REFERENCE && !value.isArray())
        return CIMValue(canonical(value.toCIMObjectPath()));
    if (value.getType() == CIMDataType::STRING && !value.isArray())
        return CIMValue(read(value.toString().c_str()));
    OW_THROWCIMMSG(CIMException::TYPE_MISMATCH, "a reference is an object path");
}

CIMObjectPath ServedClasses::read(const std::string& text) const {
    // A namespace has no dots; a class has no colons, and a dot precedes its keys.
    const bool hasNamespace = text.find(':') < text.find('.');
    const std::string whole = hasNamespace ? text : std::string(servedNamespace) + ":" + text;
    return canonical(CIMObjectPath::parse(String(whole.data(), whole.size())));
}

} // namespace cimom
