#include "objects/Naming.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMValueCast.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;

const char* const onlyNameSpace = "root/cimv2";

namespace {

/** The value of the property of a name that has one; else null. */
CIMValue valueOf(const CIMPropertyArray& properties, const CIMName& name) {
    for (const CIMProperty& property : properties) {
        if (property && property.getValue() && CIMName(property.getName()) == name)
            return property.getValue();
    }
    return CIMValue(CIMNULL);
}

/** Objects have texts too, and arrays a first element, but neither is what a property of another kind means.
 */
bool isConvertible(const CIMValue& value, const PropertyDeclaration& declared) {
    switch (value.getType()) {
    case CIMDataType::REFERENCE:
    case CIMDataType::EMBEDDEDCLASS:
    case CIMDataType::EMBEDDEDINSTANCE:
        return value.getType() == declared.type;
    default:
        return declared.isArray || !value.isArray();
    }
}

} // namespace

CIMValue converted(const CIMValue& value, const PropertyDeclaration& declared) {
    if (value && !isConvertible(value, declared)) {
        const String why = String(declared.name) + ": a value of another kind";
        OW_THROWCIMMSG(CIMException::TYPE_MISMATCH, why.c_str());
    }
    try {
        return CIMValueCast::castValueToDataType(value, declared.dataType());
    } catch (const Exception& e) {
        const String why = String(declared.name) + ": " + e.getMessage();
        OW_THROWCIMMSG_SUBEX(CIMException::TYPE_MISMATCH, why.c_str(), e);
    }
}

CIMObjectPath pathNamedBy(const CIMPropertyArray& properties, const ClassDeclaration& declaration) {
    CIMObjectPath path(CIMName(declaration.name), String(onlyNameSpace));
    const PropertyDeclaration* missing = nullptr;
    for (const PropertyDeclaration& declared : declaration.properties) {
        if (declared.role != Role::key)
            continue;
        const CIMValue value = converted(valueOf(properties, declared.name), declared);
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

CIMObjectPath pathOf(const CIMInstance& instance) {
    return CIMObjectPath(onlyNameSpace, instance);
}

const PropertyDeclaration* find(const ClassDeclaration& declaration, const CIMName& name) {
    const auto found =
        std::find_if(declaration.properties.begin(), declaration.properties.end(),
                     [&name](const PropertyDeclaration& declared) { return name == CIMName(declared.name); });
    return found == declaration.properties.end() ? nullptr : &*found;
}

} // namespace cimom
