#ifndef UTIL_ASCII_HPP_INCLUDED
#define UTIL_ASCII_HPP_INCLUDED
#include <algorithm>
#include <string_view>

/** Character classes and comparison in ASCII. Independent of the process locale, unlike <cctype> and
 * strcasecmp(3). */
namespace ascii {

/** Space, tab, line feed, carriage return: white space of XML 1.0 and of HTTP header lines. */
constexpr bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/** A byte below 0x20, or DEL. */
constexpr bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

inline bool holdsControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(), isControl);
}

constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/** Value of a hexadecimal digit of either case; -1 for any other byte. */
constexpr int hexDigit(char c) {
    if (isDigit(c))
        return c - '0';
    const char lower = toLower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/** Whether two texts are equal when letters of ASCII are compared without case. */
inline bool equalsIgnoreCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return toLower(x) == toLower(y); });
}

/** The text without leading and trailing white space. A view of the same bytes. */
inline std::string_view trim(std::string_view text) {
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace ascii
#endif
