#include "site/JsonValues.hpp"

#include "OW_CIMDateTime.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMObjectPath.hpp"
#include "system/Text.hpp"
#include "types/Utf8.hpp"

#include <charconv>
#include <limits>
#include <type_traits>

namespace cimom {

using namespace OpenWBEM;
using json::Value;

namespace {

[[noreturn]] void throwExpected(const Value& value, const std::string& what) {
    throw json::Error(value.line, "expected " + what);
}

const std::string& textOf(const Value& value, const char* expected) {
    if (value.kind != Value::Kind::string)
        throwExpected(value, expected);
    if (value.text.find('\0') != std::string::npos)
        throwExpected(value, std::string(expected) + " without U+0000");
    return value.text;
}

template <class T>
T integer(const Value& value, const char* type) {
    using Limits = std::numeric_limits<T>;
    const std::optional<T> result = value.kind == Value::Kind::number ? number<T>(value.text) : std::nullopt;
    if (!result)
        throwExpected(value, "an integer from " + std::to_string(Limits::min()) + " to " +
                                 std::to_string(Limits::max()) + " (" + type + ")");
    return *result;
}

template <class T>
T real(const Value& value, const char* type) {
    T result{};
    const char* const end = value.text.data() + value.text.size();
    if (value.kind != Value::Kind::number ||
        std::from_chars(value.text.data(), end, result).ec != std::errc())
        throwExpected(value, std::string("a number in the range of ") + type);
    return result;
}

Bool boolean(const Value& value) {
    if (value.kind != Value::Kind::boolean)
        throwExpected(value, "true or false (boolean)");
    return Bool(value.text == "true");
}

String string(const Value& value) {
    const std::string& text = textOf(value, "a string");
    return String(text.data(), text.size());
}

Char16 character(const Value& value) {
    const char* const expected = "a string of one character up to U+FFFF (char16)";
    const std::string& text = textOf(value, expected);
    const char* next = text.c_str();
    const char32_t code = takeUtf8(next);
    const char32_t last = 0xFFFF;
    if (code > last || next != text.c_str() + text.size())
        throwExpected(value, expected);
    return Char16(static_cast<UInt16>(code));
}

unsigned daysOf(unsigned year, unsigned month) {
    if (month == 2)
        return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

/** Checks the ranges of DSP0004, datetime. Allows leap seconds, and offsets of up to 14 hours. */
bool isInRange(const CIMDateTime& time) {
    if (time.getHours() > 23 || time.getMinutes() > 59 || time.getSeconds() > (time.isInterval() ? 59 : 60))
        return false;
    const int maximumOffset = 14 * 60; // minutes
    return time.isInterval() || (time.getMonth() >= 1 && time.getMonth() <= 12 && time.getDay() >= 1 &&
                                 time.getDay() <= daysOf(time.getYear(), time.getMonth()) &&
                                 time.getUtc() >= -maximumOffset && time.getUtc() <= maximumOffset);
}

CIMDateTime dateTime(const Value& value) {
    const char* const expected =
        "a date yyyymmddhhmmss.mmmmmm+uuu or an interval ddddddddhhmmss.mmmmmm:000 (datetime)";
    const String text(textOf(value, expected).c_str());
    try {
        const CIMDateTime result(text);
        // CIMDateTime ignores malformed ends of fields. Only a well-formed text is the same again.
        if (result.toString() == text && isInRange(result))
            return result;
    } catch (const CIMDateTimeException&) {
    }
    throwExpected(value, expected);
}

CIMObjectPath reference(const Value& value, const ServedClasses& classes) {
    const char* const expected = "an object path, <class>.<key>=\"<value>\",... (reference)";
    const std::string& text = textOf(value, expected);
    try {
        return classes.read(text);
    } catch (const CIMException& e) {
        const std::string why = e.getDescription() ? e.getDescription() : "";
        if (e.getErrNo() == CIMException::INVALID_CLASS)
            throwExpected(value, "a reference to a served class, not to " + why);
        throwExpected(value, expected + (": " + why));
    }
}

/** A value that `read` reads, or an array of such values. */
template <class Read>
CIMValue build(const Value& value, bool isArray, Read read) {
    if (!isArray)
        return CIMValue(read(value));
    if (value.kind != Value::Kind::array)
        throwExpected(value, "an array");
    Array<std::decay_t<decltype(read(value))>> elements;
    elements.reserve(value.elements.size());
    for (const Value& element : value.elements)
        elements.push_back(read(element));
    return CIMValue(elements);
}

template <class T>
CIMValue integers(const Value& value, const PropertyDeclaration& declared, const char* type) {
    return build(value, declared.isArray, [type](const Value& each) { return integer<T>(each, type); });
}

template <class T>
CIMValue reals(const Value& value, const PropertyDeclaration& declared, const char* type) {
    return build(value, declared.isArray, [type](const Value& each) { return real<T>(each, type); });
}

} // namespace

CIMValue valueOf(const Value& value, const PropertyDeclaration& declared, const ServedClasses& classes) {
    if (value.kind == Value::Kind::null)
        return CIMValue(CIMNULL);
    switch (declared.type) {
    case CIMDataType::UINT8:
        return integers<UInt8>(value, declared, "uint8");
    case CIMDataType::SINT8:
        return integers<Int8>(value, declared, "sint8");
    case CIMDataType::UINT16:
        return integers<UInt16>(value, declared, "uint16");
    case CIMDataType::SINT16:
        return integers<Int16>(value, declared, "sint16");
    case CIMDataType::UINT32:
        return integers<UInt32>(value, declared, "uint32");
    case CIMDataType::SINT32:
        return integers<Int32>(value, declared, "sint32");
    case CIMDataType::UINT64:
        return integers<UInt64>(value, declared, "uint64");
    case CIMDataType::SINT64:
        return integers<Int64>(value, declared, "sint64");
    case CIMDataType::REAL32:
        return reals<Real32>(value, declared, "real32");
    case CIMDataType::REAL64:
        return reals<Real64>(value, declared, "real64");
    case CIMDataType::BOOLEAN:
        return build(value, declared.isArray, boolean);
    case CIMDataType::STRING:
        return build(value, declared.isArray, string);
    case CIMDataType::CHAR16:
        return build(value, declared.isArray, character);
    case CIMDataType::DATETIME:
        return build(value, declared.isArray, dateTime);
    case CIMDataType::REFERENCE:
        return build(value, declared.isArray,
                     [&classes](const Value& each) { return reference(each, classes); });
    default: // embedded objects
        throwExpected(value, "null (values of this type are not supported)");
    }
}

} // namespace cimom
