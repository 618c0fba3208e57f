// Instances, properties and their declarations.
#include "xml/ObjectReader.hpp"

#include "xml/Nesting.hpp"
#include "xml/TextValue.hpp"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace OpenWBEM {
namespace xml {
namespace {

bool isTrue(std::string_view text) {
    return equalsIgnoreCase(text, "true");
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool hasKeyQualifier(const CIMProperty& property) {
    const QualifierArray& qualifiers = ObjectAccess::declaration(property).qualifiers;
    return !qualifiers.empty() && OpenWBEM::isTrue(qualifiers, "Key");
}

CIMPropertyArray keysAmong(const CIMPropertyArray& properties) {
    CIMPropertyArray keys;
    for (const CIMProperty& property : properties)
        if (hasKeyQualifier(property))
            keys.push_back(property);
    return keys;
}

CIMDataType::Type typeOf(std::string_view name) {
    const CIMDataType::Type type = CIMDataType::strToSimpleType(toString(name));
    return type == CIMDataType::INVALID ? CIMDataType::CIMNULL : type;
}

} // namespace

CIMInstance ObjectReader::namedInstance() {
    const Nesting nesting(*this);
    CIMPropertyArray itsKeys;
    CIMInstance result{CIMNULL};
    while (m_in.next() == Tag::start) {
        if (m_in.name() == "INSTANCENAME")
            itsKeys = keys();
        else if (m_in.name() == "INSTANCE")
            result = readInstance();
        else
            m_in.skip();
    }
    if (!result)
        m_in.fail("Missing element", "VALUE.NAMEDINSTANCE without INSTANCE");
    result.setKeys(itsKeys);
    return result;
}

CIMInstance ObjectReader::instance() {
    const Nesting nesting(*this);
    return readInstance();
}

CIMInstance ObjectReader::readInstance() {
    auto data = std::make_unique<CIMInstance::Data>();
    data->className = className(m_in.attribute("CLASSNAME"));
    const std::string_view language = m_in.attribute("xml:lang");
    if (!language.empty())
        data->language = toString(language);
    const std::size_t first = m_collected.size();
    while (m_in.next(expectedTag()) == Tag::start) {
        if (startsProperty())
            append(m_collected, property(), first);
        else if (m_in.name() == "QUALIFIER")
            append(data->qualifiers, qualifier());
        else
            m_in.skip();
    }
    data->properties = collected(first);
    data->keys = keysAmong(data->properties);
    return ObjectAccess::object<CIMInstance>(data.release());
}

// Removes and returns the collected properties from an index on.
CIMPropertyArray ObjectReader::collected(std::size_t first) {
    const auto begin = m_collected.begin() + static_cast<std::ptrdiff_t>(first);
    if (begin == m_collected.end())
        return CIMPropertyArray();
    CIMPropertyArray all(std::make_move_iterator(begin), std::make_move_iterator(m_collected.end()));
    m_collected.erase(begin, m_collected.end());
    return all;
}

// Consecutive names are usually equal.
CIMName ObjectReader::className(std::string_view text) {
    if (text != view(m_className))
        m_className = toString(text);
    return m_className;
}

std::string_view ObjectReader::expectedTag() const {
    return m_next < m_cached.size() ? std::string_view(m_cached[m_next].tag) : std::string_view();
}

bool ObjectReader::startsProperty() const {
    const std::string_view name = m_in.name();
    return name == "PROPERTY" || name == "PROPERTY.ARRAY" || name == "PROPERTY.REFERENCE" ||
           name == "PROPERTY.REFARRAY";
}

CIMProperty ObjectReader::property() {
    const std::size_t index = declarationIndex();
    detail::Shared<Declaration> declaration = m_cached[index].declaration;
    bool isEmbedded = m_cached[index].isEmbedded;
    CIMValue content{CIMNULL};
    while (m_in.next() == Tag::start) {
        if (m_in.name() == "QUALIFIER") {
            Qualifier read = qualifier();
            isEmbedded = isEmbedded || OpenWBEM::isTrue(read, "EmbeddedObject");
            append(declaration.edit().qualifiers, std::move(read));
        } else {
            content = value(declaration->type.getType(), isEmbedded);
        }
    }
    return ObjectAccess::property(std::move(declaration), std::move(content));
}

// Index of the cached declaration for the start tag. Replaces the cached one if its tag differs.
std::size_t ObjectReader::declarationIndex() {
    const std::size_t index = std::min(m_next++, maximumCached - 1);
    if (index == m_cached.size())
        m_cached.emplace_back();
    Cached& cached = m_cached[index];
    if (!cached.declaration || cached.tag != m_in.tag()) {
        cached.tag = m_in.tag();
        cached.declaration = newDeclaration();
        cached.isEmbedded =
            !m_in.attribute("EmbeddedObject").empty() || !m_in.attribute("EMBEDDEDOBJECT").empty();
    }
    return index;
}

detail::Shared<Declaration> ObjectReader::newDeclaration() const {
    detail::Shared<Declaration> result(new Declaration);
    Declaration& declaration = result.edit();
    declaration.name = toString(m_in.attribute("NAME"));
    declaration.originClass = toString(m_in.attribute("CLASSORIGIN"));
    declaration.propagated = isTrue(m_in.attribute("PROPAGATED"));
    declaration.type = declaredType();
    if (declaration.type.isArrayType())
        declaration.arraySize = declaration.type.getSize();
    return result;
}

CIMDataType ObjectReader::declaredType() const {
    const bool isReference = endsWith(m_in.name(), ".REFERENCE") || endsWith(m_in.name(), ".REFARRAY");
    CIMDataType type = isReference ? CIMDataType(CIMName(toString(m_in.attribute("REFERENCECLASS"))))
                                   : CIMDataType(typeOf(m_in.attribute("TYPE")));
    if (!endsWith(m_in.name(), "ARRAY"))
        return type;
    Int64 size = 0;
    if (!parseInteger(m_in.attribute("ARRAYSIZE"), size) || size < 1 || size > 0x7FFFFFFF)
        size = -1;
    return ObjectAccess::dataType(type.getType(), static_cast<Int32>(size),
                                  size < 1 ? CIMDataType::SIZE_UNLIMITED : CIMDataType::SIZE_LIMITED,
                                  type.getRefClassName());
}

Qualifier ObjectReader::qualifier() {
    Qualifier result;
    result.name = toString(m_in.attribute("NAME"));
    result.typeName = result.name;
    result.type = CIMDataType(typeOf(m_in.attribute("TYPE")));
    result.propagated = isTrue(m_in.attribute("PROPAGATED"));
    result.language = toString(m_in.attribute("xml:lang"));
    if (equalsIgnoreCase(m_in.attribute("OVERRIDABLE"), "false"))
        result.flavors.push_back(Qualifier::NOT_OVERRIDABLE);
    if (equalsIgnoreCase(m_in.attribute("TOSUBCLASS"), "false"))
        result.flavors.push_back(Qualifier::RESTRICTED);
    if (isTrue(m_in.attribute("TRANSLATABLE")))
        result.flavors.push_back(Qualifier::TRANSLATABLE);
    while (m_in.next() == Tag::start)
        result.value = value(result.type.getType());
    if (result.value && result.value.isArray())
        result.type.setToArrayType(-1);
    return result;
}

} // namespace xml
} // namespace OpenWBEM
