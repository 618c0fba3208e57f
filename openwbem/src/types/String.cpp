#include "OW_String.hpp"

#include "OW_Char16.hpp"
#include "Utf8.hpp"
#include "ValueText.hpp"
#include "detail/OW_Shared.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <istream>
#include <limits>
#include <locale.h>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace detail {

Text* Text::make(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) - sizeof(Text) - 1)
        throw std::bad_alloc();
    Text* const text = new (::operator new(sizeof(Text) + length + 1)) Text{{1}, length};
    text->bytes()[length] = '\0';
    return text;
}

Text* Text::none() noexcept {
    // The reference count starts at 1 and is never released. bytes() finds the NUL in end.
    static struct {
        Text text{{1}, 0};
        char end[sizeof(Text)] = {};
    } empty;
    empty.text.handles.fetch_add(1, std::memory_order_relaxed);
    return &empty.text;
}

void Text::free(Text* text) noexcept {
    text->~Text();
    ::operator delete(text);
}

} // namespace detail

namespace {

using detail::Text;
using detail::TextHandle;

TextHandle copyOf(const char* text, std::size_t length) {
    if (!text)
        return TextHandle();
    if (length == 0)
        return TextHandle(Text::none());
    TextHandle copy(Text::make(length));
    std::memcpy(copy->bytes(), text, length);
    return copy;
}

std::size_t lengthOf(const char* text) {
    return text ? std::strlen(text) : 0;
}

template <class T>
TextHandle textOf(T value) {
    std::string text;
    appendText(text, value);
    return copyOf(text.data(), text.size());
}

// Locale-independent, unlike isspace() and toupper().
bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
char toUpper(char c) {
    return static_cast<char>(c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c);
}

std::string_view viewOf(const String& text) {
    return std::string_view(text.c_str(), text.length());
}

bool areEqual(std::string_view a, const String& b, String::EIgnoreCaseFlag flag) {
    if (flag == String::E_CASE_SENSITIVE)
        return a == viewOf(b);
    return String(a.data(), a.size()).equalsIgnoreCase(b);
}

[[noreturn]] void throwConversion(const String& text, const char* type) {
    const std::string message = std::string("Unable to convert \"") + text.c_str() + "\" into " + type;
    OW_THROW(StringConversionException, message.c_str());
}

// Reads with strtoll() or strtoull(), which have 64 bits on every platform.
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

// Like strtoul() with a long of 32 bits: a negative number wraps at 2^32, so -1 is the maximum UInt32 and
// out of range for UInt16.
template <class T>
T unsignedInteger(const String& text, bool isNull, int base, const char* type) {
    const Int64 maximum = std::numeric_limits<UInt32>::max();
    const Int64 number = wideInteger(text, isNull, base, std::strtoll, type);
    const auto wrapped = static_cast<UInt32>(number);
    const auto narrow = static_cast<T>(wrapped);
    if (number < -maximum || number > maximum || narrow != wrapped)
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

String::String(const char* text)
    : m_text(copyOf(text, lengthOf(text))) {}
String::String(const char* text, std::size_t length)
    : m_text(copyOf(text, length)) {}
String::String(ETakeOwnershipFlag, char* newed, std::size_t length) {
    const std::unique_ptr<char[]> owned(newed);
    m_text = copyOf(newed, length);
}
String::String(const char* a, std::size_t lengthA, const char* b, std::size_t lengthB)
    : m_text(lengthA + lengthB == 0 ? Text::none() : Text::make(lengthA + lengthB)) {
    std::copy_n(b, lengthB, std::copy_n(a, lengthA, m_text->bytes()));
}
String::String(Int32 value)
    : m_text(textOf(value)) {}
String::String(UInt32 value)
    : m_text(textOf(value)) {}
String::String(Int64 value)
    : m_text(textOf(value)) {}
String::String(UInt64 value)
    : m_text(textOf(value)) {}
String::String(long value)
    : m_text(textOf(Int64{value})) {}
String::String(unsigned long value)
    : m_text(textOf(UInt64{value})) {}
String::String(Real64 value)
    : m_text(textOf(value)) {}
String::String(char c)
    : String(&c, 1) {}

char* String::allocateCString() const {
    char* const copy = static_cast<char*>(std::malloc(length() + 1));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy, c_str(), length() + 1);
    return copy;
}

char* String::edit() {
    if (m_text.isShared())
        m_text = copyOf(c_str(), length());
    return m_text->bytes();
}

const char& String::operator[](std::size_t index) const {
    static const char outside = '\0';
    if (!m_text && index == 0)
        detail::throwNullReference();
    return index < length() ? m_text->bytes()[index] : outside;
}

char& String::operator[](std::size_t index) {
    static thread_local char outside;
    if (!m_text && index == 0)
        detail::throwNullReference();
    outside = '\0';
    return index < length() ? edit()[index] : outside;
}

String& String::concat(const String& other) {
    return *this = *this + other;
}
String& String::concat(const char* other) {
    return other ? *this = *this + other : *this;
}
String& String::concat(char c) {
    return *this = *this + c;
}

int String::format(const char* form, ...) {
    va_list arguments;
    va_start(arguments, form);
    char* text = nullptr;
    const int length = vasprintf(&text, form, arguments);
    va_end(arguments);
    if (length < 0)
        throw std::bad_alloc();
    const std::unique_ptr<char, decltype(&std::free)> owned(text, &std::free);
    *this = String(text, static_cast<std::size_t>(length));
    return length;
}

String& String::ltrim() {
    const char* const end = c_str() + length();
    const char* const first = std::find_if_not(c_str(), end, isSpace);
    return erase(0, static_cast<std::size_t>(first - c_str()));
}

String& String::rtrim() {
    std::size_t kept = length();
    while (kept > 0 && isSpace(charAt(kept - 1)))
        --kept;
    return erase(kept);
}

String& String::trim() {
    return rtrim().ltrim();
}

String& String::toLowerCase() {
    if (!empty())
        std::transform(c_str(), c_str() + length(), edit(), ascii::toLower);
    return *this;
}

String& String::toUpperCase() {
    if (!empty())
        std::transform(c_str(), c_str() + length(), edit(), toUpper);
    return *this;
}

String& String::erase() {
    return *this = String();
}

String& String::erase(std::size_t begin, std::size_t count) {
    if (begin >= length() || count == 0)
        return *this;
    const std::size_t removed = std::min(count, length() - begin);
    const std::size_t end = begin + removed;
    return *this = String(c_str(), begin, c_str() + end, length() - end);
}

int String::compareTo(const char* other) const {
    return std::strcmp(c_str(), other);
}

int String::compareToIgnoreCase(const char* other) const {
    return compareIgnoringCase(c_str(), other);
}

bool String::startsWith(const String& other, EIgnoreCaseFlag flag) const {
    if (other.empty() || other.length() > length())
        return empty() && other.empty();
    return areEqual(viewOf(*this).substr(0, other.length()), other, flag);
}

bool String::startsWith(const char* other, EIgnoreCaseFlag flag) const {
    return startsWith(String(other), flag);
}

bool String::endsWith(const String& other, EIgnoreCaseFlag flag) const {
    if (other.empty() || other.length() > length())
        return empty() && other.empty();
    return areEqual(viewOf(*this).substr(length() - other.length()), other, flag);
}

bool String::endsWith(const char* other, EIgnoreCaseFlag flag) const {
    return endsWith(String(other), flag);
}

std::size_t String::indexOf(char c, std::size_t from) const {
    return viewOf(*this).find(c, from);
}

std::size_t String::indexOf(const char* text, std::size_t from) const {
    return from < length() ? viewOf(*this).find(text, from) : npos;
}

std::size_t String::indexOf(const String& text, std::size_t from) const {
    return from < length() ? viewOf(*this).find(viewOf(text), from) : npos;
}

std::size_t String::lastIndexOf(char c, std::size_t from) const {
    return viewOf(*this).rfind(c, from);
}

std::size_t String::lastIndexOf(const char* text, std::size_t from) const {
    return empty() ? npos : viewOf(*this).rfind(text, from);
}

std::size_t String::lastIndexOf(const String& text, std::size_t from) const {
    return empty() ? npos : viewOf(*this).rfind(viewOf(text), from);
}

String String::substring(std::size_t begin, std::size_t count) const {
    if (begin >= length() || count == 0)
        return String();
    return String(c_str() + begin, std::min(count, length() - begin));
}

StringArray String::tokenize(const char* delimiters) const {
    const std::string_view text = viewOf(*this);
    StringArray tokens;
    std::size_t begin = text.find_first_not_of(delimiters);
    while (begin != npos) {
        const std::size_t end = std::min(text.find_first_of(delimiters, begin), text.size());
        tokens.push_back(String(text.data() + begin, end - begin));
        begin = text.find_first_not_of(delimiters, end);
    }
    return tokens;
}

bool String::isSpaces() const {
    const std::string_view text = viewOf(*this);
    return std::all_of(text.begin(), text.end(), isSpace);
}

std::size_t String::UTF8Length() const {
    const std::string_view text = viewOf(*this);
    // Continuation bytes do not count (RFC 3629).
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

UInt32 String::hashCode() const {
    return static_cast<UInt32>(std::hash<std::string_view>()(viewOf(*this)));
}

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

String String::getLine(std::istream& in) {
    std::string line;
    std::getline(in, line);
    return String(line.data(), line.size());
}

String operator+(const String& a, const String& b) {
    return String(a.c_str(), a.length(), b.c_str(), b.length());
}
String operator+(const String& a, const char* b) {
    return String(a.c_str(), a.length(), b, lengthOf(b));
}
String operator+(const char* a, const String& b) {
    return String(a, lengthOf(a), b.c_str(), b.length());
}
String operator+(const String& a, char b) {
    return String(a.c_str(), a.length(), &b, 1);
}
String operator+(char a, const String& b) {
    return String(&a, 1, b.c_str(), b.length());
}

std::ostream& operator<<(std::ostream& out, const String& text) {
    return out << text.c_str();
}

} // namespace OpenWBEM
