// Names and paths of instances and classes.
#include "types/ValueData.hpp"
#include "xml/Nesting.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/TextValue.hpp"

#include <algorithm>
#include <memory>
#include <utility>

namespace OpenWBEM {
namespace xml {
namespace {

// Elements that contain nothing but parts of a path.
bool isPath(std::string_view name) {
    const std::string_view paths[] = {"LOCALINSTANCEPATH", "INSTANCEPATH",  "LOCALCLASSPATH",
                                      "CLASSPATH",         "NAMESPACEPATH", "LOCALNAMESPACEPATH"};
    return std::find(std::begin(paths), std::end(paths), name) != std::end(paths);
}

void setHost(CIMObjectPath::Data& path, std::string_view text) {
    const std::size_t colon = text.find(':');
    path.host = toString(text.substr(0, colon));
    if (colon != std::string_view::npos)
        path.port = toString(text.substr(colon + 1));
}

CIMValue numericKey(std::string_view text) {
    Int64 integer = 0;
    return parseInteger(text, integer) ? CIMValue(integer) : CIMValue(fromText<Real64>(text));
}

} // namespace

CIMObjectPath ObjectReader::objectPath() {
    const Nesting nesting(*this);
    auto path = std::make_unique<CIMObjectPath::Data>();
    std::string nameSpace;
    std::size_t open = 0; // depth of the elements around the parts
    Tag tag = Tag::start;
    do {
        if (tag == Tag::end)
            --open;
        else if (isPath(m_in.name()))
            ++open;
        else
            pathPart(*path, nameSpace);
    } while (open > 0 && (tag = m_in.next()) != Tag::none);
    path->nameSpace = toString(nameSpace);
    return ObjectAccess::object<CIMObjectPath>(path.release());
}

void ObjectReader::pathPart(CIMObjectPath::Data& path, std::string& nameSpace) {
    if (m_in.name() == "INSTANCENAME") {
        path.className = className(m_in.attribute("CLASSNAME"));
        path.keys = keys();
        return;
    }
    if (m_in.name() == "CLASSNAME") {
        path.className = className(m_in.attribute("NAME"));
    } else if (m_in.name() == "NAMESPACE") {
        nameSpace += nameSpace.empty() ? "" : "/";
        nameSpace += m_in.attribute("NAME");
    } else if (m_in.name() == "HOST") {
        setHost(path, m_in.text());
    }
    m_in.skip();
}

// The keys of an INSTANCENAME, which may contain the value of a single key without its name.
CIMPropertyArray ObjectReader::keys() {
    const std::size_t first = m_collected.size();
    while (m_in.next(expectedTag()) == Tag::start)
        append(m_collected, key(), first);
    return collected(first);
}

CIMProperty ObjectReader::key() {
    const std::size_t index = declarationIndex();
    detail::Shared<Declaration> declaration = m_cached[index].declaration;
    CIMValue content{CIMNULL};
    if (m_in.name() != "KEYBINDING")
        content = keyValue();
    else
        while (m_in.next() == Tag::start)
            content = keyValue();
    const CIMDataType::Type type = content ? content.getType() : CIMDataType::CIMNULL;
    if (declaration->type.getType() != type) {
        declaration.edit().type = CIMDataType(type);
        if (index + 1 < maximumCached) // a nested object may have replaced the last one
            m_cached[index].declaration = declaration;
    }
    return ObjectAccess::property(std::move(declaration), std::move(content));
}

CIMValue ObjectReader::keyValue() {
    if (m_in.name() != "KEYVALUE")
        return value(CIMDataType::CIMNULL);
    const bool isNumeric = m_in.attribute("VALUETYPE") == "numeric";
    const bool isBoolean = m_in.attribute("VALUETYPE") == "boolean";
    const std::string_view text = m_in.text();
    CIMValue result = isNumeric   ? numericKey(text)
                      : isBoolean ? CIMValue(fromText<Bool>(text))
                                  : CIMValue(toString(text));
    m_in.skip();
    return result;
}

// VALUE.REFERENCE
CIMObjectPath ObjectReader::reference() {
    CIMObjectPath path;
    while (m_in.next() == Tag::start)
        path = objectPath();
    return path;
}

} // namespace xml
} // namespace OpenWBEM
