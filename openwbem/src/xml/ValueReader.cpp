// Single values, arrays and embedded objects.
#include "OW_CIMException.hpp"
#include "types/ValueData.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/TextValue.hpp"

#include <utility>

namespace OpenWBEM {
namespace xml {
namespace {

// A nested object is escaped once per level, and unescaped once per level: its bytes are processed again at
// each level. The bytes of all levels below the first are limited to this multiple of the first level, plus
// an allowance.
const std::uint64_t unescapedRatio = 4;
const std::uint64_t unescapedAllowance = 4ULL * 1024 * 1024;

} // namespace

CIMValue ObjectReader::value(CIMDataType::Type type, bool isEmbedded) {
    const std::string_view name = m_in.name();
    if (name == "VALUE")
        return isEmbedded ? embedded() : scalar(type);
    if (name == "VALUE.ARRAY")
        return isEmbedded ? embeddedArray() : array(type);
    if (name == "VALUE.REFERENCE")
        return ValueAccess::make(reference());
    if (name == "VALUE.REFARRAY")
        return referenceArray();
    m_in.skip();
    return CIMValue(CIMNULL);
}

CIMValue ObjectReader::scalar(CIMDataType::Type type) {
    const std::string_view text = m_in.text();
    CIMValue result{CIMNULL};
    if (!CIMDataType::isNumericType(type) || !isNullNumber(text))
        visitType(type, [&](const auto& kind) {
            result = ValueAccess::make(fromText<std::decay_t<decltype(kind)>>(text));
        });
    m_in.skip();
    return result;
}

CIMValue ObjectReader::array(CIMDataType::Type type) {
    CIMValue result{CIMNULL};
    const bool isRead =
        visitType(type, [&](const auto& kind) { result = arrayOf<std::decay_t<decltype(kind)>>(type); });
    if (!isRead)
        m_in.skip();
    return result;
}

template <class T>
CIMValue ObjectReader::arrayOf(CIMDataType::Type type) {
    Array<T> elements;
    while (m_in.next() == Tag::start) {
        if (m_in.name() == "VALUE") {
            const std::string_view text = m_in.text();
            const bool isNull = CIMDataType::isNumericType(type) && isNullNumber(text);
            append(elements, isNull ? T() : fromText<T>(text));
        } else if (m_in.name() == "VALUE.NULL") {
            append(elements, T());
        }
        m_in.skip();
    }
    return ValueAccess::make(std::move(elements));
}

CIMValue ObjectReader::referenceArray() {
    CIMObjectPathArray elements;
    while (m_in.next() == Tag::start) {
        if (m_in.name() == "VALUE.REFERENCE") {
            append(elements, reference());
            continue;
        }
        if (m_in.name() == "VALUE.NULL")
            append(elements, CIMObjectPath());
        m_in.skip();
    }
    return ValueAccess::make(std::move(elements));
}

CIMValue ObjectReader::embedded() {
    const unsigned line = m_in.line();
    CIMValue result = object(m_in.text(), line);
    m_in.skip();
    return result;
}

CIMValue ObjectReader::embeddedArray() {
    CIMInstanceArray instances;
    CIMClassArray classes;
    while (m_in.next() == Tag::start) {
        if (m_in.name() != "VALUE" && m_in.name() != "VALUE.NULL") {
            m_in.skip();
            continue;
        }
        const CIMValue element = embedded();
        if (!element)
            append(instances, CIMInstance());
        else if (element.getType() == CIMDataType::EMBEDDEDCLASS)
            append(classes, ValueAccess::content<CIMClass>(element));
        else
            append(instances, ValueAccess::content<CIMInstance>(element));
    }
    if (classes.empty())
        return ValueAccess::make(std::move(instances));
    if (!instances.empty())
        OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, "Classes and instances in one array");
    return ValueAccess::make(std::move(classes));
}

// Parses an embedded object; null for a blank text.
CIMValue ObjectReader::object(std::string_view text, unsigned line) {
    if (&m_budget == &m_own)
        m_budget.received += text.size();
    else
        m_budget.unescaped += text.size();
    if (m_budget.unescaped > unescapedAllowance + unescapedRatio * m_budget.received)
        m_in.fail("Too long", "embedded objects");

    io::Window window(text.data(), text.size());
    Tokenizer in(window, line);
    ObjectReader objects(in, m_budget);
    CIMValue result{CIMNULL};
    if (in.next() == Tag::none)
        return result;
    if (in.name() == "INSTANCE")
        result = ValueAccess::make(objects.instance());
    else if (in.name() == "CLASS")
        result = ValueAccess::make(objects.classObject());
    else
        OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, "An embedded object is neither instance nor class");
    in.next(); // throws if there is trailing text
    return result;
}

} // namespace xml
} // namespace OpenWBEM
