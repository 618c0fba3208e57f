#include "objects/ServedClasses.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMProperty.hpp"
#include "objects/Naming.hpp"

namespace cimom {

using namespace OpenWBEM;

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
        const PropertyDeclaration* const declared = cimom::find(*declaration, key.getName());
        if (!declared || !key.getValue())
            continue;
        const bool isReference = declared->type == CIMDataType::REFERENCE;
        keys.push_back(
            CIMProperty(declared->name, isReference ? canonicalReference(key.getValue()) : key.getValue()));
    }
    return pathNamedBy(keys, *declaration);
}

/** Of a key, which clients may have as a text. */
CIMValue ServedClasses::canonicalReference(const CIMValue& value) const {
    if (value.getType() == CIMDataType::REFERENCE && !value.isArray())
        return CIMValue(canonical(value.toCIMObjectPath()));
    if (value.getType() == CIMDataType::STRING && !value.isArray())
        return CIMValue(read(value.toString().c_str()));
    OW_THROWCIMMSG(CIMException::TYPE_MISMATCH, "a reference is an object path");
}

CIMObjectPath ServedClasses::read(const std::string& text) const {
    // A namespace has no dots; a class has no colons, and its keys follow a dot.
    const bool hasNameSpace = text.find(':') < text.find('.');
    const std::string whole = hasNameSpace ? text : std::string(onlyNameSpace) + ":" + text;
    return canonical(CIMObjectPath::parse(String(whole.data(), whole.size())));
}

} // namespace cimom
