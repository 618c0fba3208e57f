#include "Modification.hpp"

#include "Log.hpp"
#include "Naming.hpp"
#include "OW_CIMException.hpp"
#include "types/Utf8.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;

namespace {

bool isListed(const CIMName& name, const PropertyList* listed) {
    return !listed || std::find(listed->begin(), listed->end(), name) != listed->end();
}

bool isSame(const CIMValue& a, const CIMValue& b) {
    return a && b ? a == b : !a && !b;
}

bool isUtf8(const std::string& text) {
    const char* at = text.c_str();
    while (at < text.c_str() + text.size()) {
        const char32_t code = takeUtf8(at);
        if (code >= malformedByte && code <= malformedByte + 0xFF)
            return false;
    }
    return true;
}

/** A value as the site's values are kept: as text, which is UTF-8 as all texts of CIM are. */
std::optional<std::string> textOf(const CIMValue& value, const PropertyDeclaration& declared) {
    if (!value)
        return std::nullopt;
    const String text = value.toString();
    std::string bytes(text.c_str(), text.length());
    if (!isUtf8(bytes))
        OW_THROWCIMMSG(CIMException::TYPE_MISMATCH, (std::string(declared.name) + ": not UTF-8").c_str());
    return bytes;
}

void logDropped(const CIMName& property, const CIMInstance& present) {
    log("ModifyInstance " + std::string(pathOf(present).toString().c_str()) + ": \"" +
        property.toString().c_str() + "\" is left out: the class has no such property");
}

} // namespace

SiteValues::Values valuesToWrite(const CIMInstance& request, const PropertyList* listed,
                                 const CIMInstance& present, const ClassDeclaration& declaration) {
    SiteValues::Values changes;
    for (const CIMProperty& property : request.getProperties()) {
        const CIMName name = property.getName();
        if (!isListed(name, listed))
            continue;
        const PropertyDeclaration* const declared = find(declaration, name);
        if (!declared) {
            logDropped(name, present);
            continue;
        }
        const CIMValue value = converted(property.getValue(), *declared);
        if (declared->role == Role::site)
            changes[declared->name] = textOf(value, *declared);
        else if (!isSame(value, present.getPropertyValue(name)))
            OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, declared->name);
    }
    return changes;
}

} // namespace cimom
