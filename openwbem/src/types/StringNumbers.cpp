// Strings as numbers and truth values.
#include "OW_Char16.hpp"
#include "OW_String.hpp"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <locale.h>
#include <string>

namespace OpenWBEM {
namespace {

[[noreturn]] void throwConversion(const String& text, const char* type) {
    const std::string message = std::string("Unable to convert \"") + text.c_str() + "\" into " + type;
    OW_THROW(StringConversionException, message.c_str());
}

// Reads with one of the functions of the strtol() family. Unsigned ones take a sign: -1 is their greatest.
template <class T, class Wide>
T integer(const String& text, bool isNull, int base, Wide (*read)(const char*, char**, int),
          const char* type) {
    const char* const begin = text.c_str();
    char* end = const_cast<char*>(begin);
    errno = 0;
    const Wide number = read(begin, &end, base);
    const auto narrow = static_cast<T>(number);
    if (isNull || errno != 0 || end != begin + text.length() || static_cast<Wide>(narrow) != number)
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
    return integer<UInt8>(*this, !m_text, base, std::strtoul, "UInt8");
}
Int8 String::toInt8(int base) const {
    return integer<Int8>(*this, !m_text, base, std::strtol, "Int8");
}
UInt16 String::toUInt16(int base) const {
    return integer<UInt16>(*this, !m_text, base, std::strtoul, "UInt16");
}
Int16 String::toInt16(int base) const {
    return integer<Int16>(*this, !m_text, base, std::strtol, "Int16");
}
UInt32 String::toUInt32(int base) const {
    return integer<UInt32>(*this, !m_text, base, std::strtoul, "UInt32");
}
Int32 String::toInt32(int base) const {
    return integer<Int32>(*this, !m_text, base, std::strtol, "Int32");
}
UInt64 String::toUInt64(int base) const {
    return integer<UInt64>(*this, !m_text, base, std::strtoull, "UInt64");
}
Int64 String::toInt64(int base) const {
    return integer<Int64>(*this, !m_text, base, std::strtoll, "Int64");
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
