#ifndef UTIL_ONE_LINE_HPP_INCLUDED
#define UTIL_ONE_LINE_HPP_INCLUDED
#include "util/Ascii.hpp"

#include <algorithm>
#include <cstddef>
#include <string>

namespace util {

/** Bytes of a line of a log or of HTTP: readers limit its length. */
inline constexpr std::size_t maximumLine = 1024;

/**
 * Makes a text fit on one line of a log or of HTTP: control characters become blanks, so that a peer's line
 * ends cannot forge a line. Cut after maximumLine bytes.
 */
inline std::string onOneLine(std::string text) {
    text.resize(std::min(text.size(), maximumLine));
    std::replace_if(text.begin(), text.end(), ascii::isControl, ' ');
    return text;
}

/**
 * The same in ASCII, for a log or a reason phrase, whose readers need not know UTF-8: each byte from 0x80 on
 * becomes an escape sequence like \\xe4.
 */
inline std::string onOneAsciiLine(const std::string& text) {
    const char* const digits = "0123456789abcdef";
    std::string line;
    for (const char c : onOneLine(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80)
            line += c;
        else
            line.append("\\x").append({digits[byte / 16], digits[byte % 16]});
    }
    line.resize(std::min(line.size(), maximumLine));
    return line;
}

} // namespace util
#endif
