// Strings as numbers and truth values.
#include "OW_Char16.hpp"
#include "OW_String.hpp"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <string>

namespace OpenWBEM {
namespace {

[[noreturn]] void throwConversion(const String& text, const char* type) {
    const std::string message = std::string("Unable to convert \"") + text.c_str() + "\" into " + type;
    OW_THROW(StringConversionException, message.c_str());
}

// Reads with strtoll() or strtoull(), which have 64 bits everywhere.
template <class Wide>
Wide wideInteger(const String& text, bool isNull, int base, Wide (*read)(const char*, char**, int),
                 const char* type) {
    const char* const begin = text.c_str();
    char* end = const_cast<char*>(begin);
    errno = 0;
    const Wide number = read(begin, &end, base);
    if (isNull || errno != 0 || end != begin + text.length())
        throwConversion(text, type);
    return number;
}

template <class T>
T signedInteger(const String& text, bool isNull, int base, const char* type) {
    const Int64 number = wideInteger(text, isNull, base, std::strtoll, type);
    const auto narrow = static_cast<T>(number);
    if (narrow != number)
        throwConversion(text, type);
    return narrow;
}

// As strtoul() reads where long has 32 bits: a negative number counts down from 2^32, so that -1 is the
// greatest UInt32 and no UInt16.
template <class T>
T unsignedInteger(const String& text, bool isNull, int base, const char* type) {
    const Int64 greatest = std::numeric_limits<UInt32>::max();
    const Int64 number = wideInteger(text, isNull, base, std::strtoll, type);
    const auto word = static_cast<UInt32>(number);
    const auto narrow = static_cast<T>(word);
    if (number < -greatest || number > greatest || narrow != word)
        throwConversion(text, type);
    return narrow;
}

Real64 real(const String& text, bool isNull, const char* type) {
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    const char* const begin = text.c_str();
    char* end = nullptr;
    errno = 0;
    const Real64 number = strtod_l(begin, &end, classic);
    if (isNull || errno != 0 || end != begin + text.length() || std::isinf(number))
        throwConversion(text, type);
    return number;
}

} // namespace

UInt8 String::toUInt8(int base) const {
    return unsignedInteger<UInt8>(*this, !m_text, base, "UInt8");
}
Int8 String::toInt8(int base) const {
    return signedInteger<Int8>(*this, !m_text, base, "Int8");
}
UInt16 String::toUInt16(int base) const {
    return unsignedInteger<UInt16>(*this, !m_text, base, "UInt16");
}
Int16 String::toInt16(int base) const {
    return signedInteger<Int16>(*this, !m_text, base, "Int16");
}
UInt32 String::toUInt32(int base) const {
    return unsignedInteger<UInt32>(*this, !m_text, base, "UInt32");
}
Int32 String::toInt32(int base) const {
    return signedInteger<Int32>(*this, !m_text, base, "Int32");
}
UInt64 String::toUInt64(int base) const {
    return wideInteger(*this, !m_text, base, std::strtoull, "UInt64");
}
Int64 String::toInt64(int base) const {
    return wideInteger(*this, !m_text, base, std::strtoll, "Int64");
}

Real32 String::toReal32() const {
    const auto narrow = static_cast<Real32>(real(*this, !m_text, "Real32"));
    if (std::isinf(narrow))
        throwConversion(*this, "Real32");
    return narrow;
}

Real64 String::toReal64() const {
    return real(*this, !m_text, "Real64");
}

bool String::toBool() const {
    if (equalsIgnoreCase("true"))
        return true;
    if (!equalsIgnoreCase("false"))
        throwConversion(*this, "bool");
    return false;
}

Char16 String::toChar16() const {
    return Char16(*this);
}

} // namespace OpenWBEM
