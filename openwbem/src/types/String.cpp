// Making, joining and changing strings. Searching stands in StringSearch.cpp, numbers in StringNumbers.cpp.
#include "OW_String.hpp"

#include "OW_Char16.hpp"
#include "ValueText.hpp"
#include "detail/OW_Shared.hpp"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <string>

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
    // The NUL stands where bytes() looks for it. The count starts with a handle that nobody gives back.
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

// Not isspace() and its relatives: texts must be handled alike in every locale of the process.
bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
char toLower(char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}
char toUpper(char c) {
    return static_cast<char>(c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c);
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
        std::transform(c_str(), c_str() + length(), edit(), toLower);
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
    const std::size_t behind = begin + removed;
    return *this = String(c_str(), begin, c_str() + behind, length() - behind);
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
