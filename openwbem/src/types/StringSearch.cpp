// Comparing strings, finding in them and taking them apart.
#include "CaseFolding.hpp"
#include "OW_String.hpp"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string_view>

namespace OpenWBEM {
namespace {

std::string_view viewOf(const String& text) {
    return std::string_view(text.c_str(), text.length());
}

bool equal(std::string_view a, const String& b, String::EIgnoreCaseFlag flag) {
    if (flag == String::E_CASE_SENSITIVE)
        return a == viewOf(b);
    return String(a.data(), a.size()).equalsIgnoreCase(b);
}

} // namespace

int String::compareTo(const char* other) const {
    return std::strcmp(c_str(), other);
}

int String::compareToIgnoreCase(const char* other) const {
    return compareFolded(c_str(), other);
}

bool String::startsWith(const String& other, EIgnoreCaseFlag flag) const {
    if (other.empty() || other.length() > length())
        return empty() && other.empty();
    return equal(viewOf(*this).substr(0, other.length()), other, flag);
}

bool String::startsWith(const char* other, EIgnoreCaseFlag flag) const {
    return startsWith(String(other), flag);
}

bool String::endsWith(const String& other, EIgnoreCaseFlag flag) const {
    if (other.empty() || other.length() > length())
        return empty() && other.empty();
    return equal(viewOf(*this).substr(length() - other.length()), other, flag);
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
    return viewOf(*this).find_first_not_of(" \t\n\v\f\r") == npos;
}

std::size_t String::UTF8Length() const {
    const std::string_view text = viewOf(*this);
    // Every byte but those that continue a character (RFC 3629).
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

UInt32 String::hashCode() const {
    return static_cast<UInt32>(std::hash<std::string_view>()(viewOf(*this)));
}

} // namespace OpenWBEM
