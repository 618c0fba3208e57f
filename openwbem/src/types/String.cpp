#include "OW_String.hpp"

#include <cstring>
#include <ostream>
#include <strings.h>

namespace OpenWBEM {

String::String(const char* text) {
    if (text)
        m_text = std::make_shared<const std::string>(text);
}

String::String(const char* text, std::size_t length) {
    if (text)
        m_text = std::make_shared<const std::string>(text, length);
}

String::String(std::string text)
    : m_text(std::make_shared<const std::string>(std::move(text))) {}

int String::compareTo(const String& other) const {
    return std::strcmp(c_str(), other.c_str());
}

int String::compareTo(const char* other) const {
    return std::strcmp(c_str(), other);
}

int String::compareToIgnoreCase(const String& other) const {
    const unsigned char* a = reinterpret_cast<const unsigned char*>(c_str());
    const unsigned char* b = reinterpret_cast<const unsigned char*>(other.c_str());
    // Not strcasecmp(): names must compare alike in every locale of the process.
    const auto lower = [](unsigned char c) -> int { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; };
    while (*a && lower(*a) == lower(*b))
        ++a, ++b;
    return lower(*a) - lower(*b);
}

String& String::operator+=(const String& other) {
    *this = *this + other;
    return *this;
}

bool String::startsWith(const String& other) const {
    return !other.empty() && length() >= other.length() &&
           std::memcmp(c_str(), other.c_str(), other.length()) == 0;
}

bool String::endsWith(const String& other) const {
    return !other.empty() && length() >= other.length() &&
           std::memcmp(c_str() + length() - other.length(), other.c_str(), other.length()) == 0;
}

std::size_t String::indexOf(char c, std::size_t from) const {
    return m_text ? m_text->find(c, from) : npos;
}

std::size_t String::indexOf(const char* text, std::size_t from) const {
    return m_text && from < length() ? m_text->find(text, from) : npos;
}

String String::substring(std::size_t begin, std::size_t count) const {
    if (begin >= length() || count == 0)
        return String();
    return String(m_text->substr(begin, count));
}

String operator+(const String& a, const String& b) {
    std::string text(a.c_str(), a.length());
    text.append(b.c_str(), b.length());
    return String(text.data(), text.size());
}

std::ostream& operator<<(std::ostream& out, const String& text) {
    return out << text.c_str();
}

} // namespace OpenWBEM
