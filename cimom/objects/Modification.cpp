#include "objects/Modification.hpp"

#include "OW_CIMException.hpp"
#include "schema/Namespace.hpp"
#include "service/Log.hpp"
#include "types/Utf8.hpp"

#include <set>
#include <string>

namespace cimom {

using namespace OpenWBEM;

namespace {

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

/** A value in the form in which SiteValues keeps it. Throws CIMException TYPE_MISMATCH if it is not UTF-8. */
std::optional<std::string> textOf(const CIMValue& value, const PropertyDeclaration& declared) {
    if (!value)
        return std::nullopt;
    const String text = value.toString();
    std::string bytes(text.c_str(), text.length());
    if (!isUtf8(bytes))
        OW_THROWCIMMSG(CIMException::TYPE_MISMATCH, (std::string(declared.name) + ": not UTF-8").c_str());
    return bytes;
}

void requireDeclared(const PropertyList& listed, const ClassDeclaration& declaration) {
    for (const CIMName& name : listed) {
        if (!declaration.find(name))
            OW_THROWCIMMSG(CIMException::INVALID_PARAMETER,
                           ("PropertyList: the class has no property " + name.toString()).c_str());
    }
}

/** Logs the names that the class does not declare, in one line. */
void logIgnored(const std::string& names, const CIMInstance& present) {
    if (!names.empty())
        service::log("ModifyInstance " + std::string(pathOf(present).toString().c_str()) +
                     ": ignored undeclared properties: " + names);
}

} // namespace

SiteValues::Values valuesToWrite(const CIMInstance& request, const PropertyList* listed,
                                 const CIMInstance& present, const ClassDeclaration& declaration) {
    if (listed)
        requireDeclared(*listed, declaration);
    const std::set<CIMName> wanted =
        listed ? std::set<CIMName>(listed->begin(), listed->end()) : std::set<CIMName>();
    SiteValues::Values changes;
    std::string ignored;
    for (const CIMProperty& property : request.getProperties()) {
        const CIMName name = property.getName();
        if (listed && wanted.count(name) == 0)
            continue;
        const PropertyDeclaration* const declared = declaration.find(name);
        if (!declared) {
            ignored += (ignored.empty() ? "\"" : ", \"") + std::string(name.toString().c_str()) + "\"";
            continue;
        }
        const CIMValue value = declared->converted(property.getValue());
        if (declared->role == Role::site)
            changes[declared->name] = textOf(value, *declared);
        else if (!isSame(value, present.getPropertyValue(name)))
            OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, declared->name);
    }
    logIgnored(ignored, present);
    return changes;
}

} // namespace cimom
