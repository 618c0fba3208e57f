#include "xml/TextValue.hpp"

#include "OW_CIMException.hpp"
#include "types/ValueText.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace OpenWBEM {
namespace xml {
namespace {

[[noreturn]] void throwUnconvertible(std::string_view text, const char* type) {
    const std::string message = "Unable to convert \"" + std::string(text) + "\" into " + type;
    OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, message.c_str());
}

template <class T>
bool parse(std::string_view text, T& number) {
    const char* const last = text.data() + text.size();
    const auto result = std::from_chars(numberStart(text.data(), last), last, number);
    return result.ec == std::errc() && result.ptr == last;
}

template <class T>
T integer(std::string_view text, const char* type) {
    T number = 0;
    if (!text.empty() && !parse(text, number))
        throwUnconvertible(text, type);
    return number;
}

Real64 real(std::string_view text, const char* type) {
    Real64 number = 0;
    if (!text.empty() && !parseReal(text.data(), text.size(), number))
        throwUnconvertible(text, type);
    return number;
}

} // namespace

template <>
UInt8 fromText(std::string_view text) {
    return integer<UInt8>(text, "UInt8");
}
template <>
Int8 fromText(std::string_view text) {
    return integer<Int8>(text, "Int8");
}
template <>
UInt16 fromText(std::string_view text) {
    return integer<UInt16>(text, "UInt16");
}
template <>
Int16 fromText(std::string_view text) {
    return integer<Int16>(text, "Int16");
}
template <>
UInt32 fromText(std::string_view text) {
    return integer<UInt32>(text, "UInt32");
}
template <>
Int32 fromText(std::string_view text) {
    return integer<Int32>(text, "Int32");
}
template <>
UInt64 fromText(std::string_view text) {
    return integer<UInt64>(text, "UInt64");
}
template <>
Int64 fromText(std::string_view text) {
    return integer<Int64>(text, "Int64");
}

template <>
Real64 fromText(std::string_view text) {
    return real(text, "Real64");
}

template <>
Real32 fromText(std::string_view text) {
    const Real64 number = real(text, "Real32");
    const Real64 largest = std::numeric_limits<Real32>::max();
    const Real64 halfStep = largest * std::numeric_limits<Real32>::epsilon() / 4;
    if (std::abs(number) > largest + halfStep)
        throwUnconvertible(text, "Real32");
    if (std::abs(number) > largest) // the writer rounded the largest value up
        return static_cast<Real32>(std::copysign(largest, number));
    return static_cast<Real32>(number);
}

template <>
Bool fromText(std::string_view text) {
    if (equalsIgnoreCase(text, "true"))
        return true;
    if (!equalsIgnoreCase(text, "false"))
        throwUnconvertible(text, "bool");
    return false;
}

template <>
Char16 fromText(std::string_view text) {
    return Char16(toString(text));
}

template <>
CIMDateTime fromText(std::string_view text) {
    return CIMDateTime(toString(text));
}

template <>
String fromText(std::string_view text) {
    return toString(text);
}

bool parseInteger(std::string_view text, Int64& number) {
    return parse(text, number);
}

bool isNullNumber(std::string_view text) {
    return equalsIgnoreCase(text, "null");
}

} // namespace xml
} // namespace OpenWBEM
