#ifndef UTIL_PERCENT_HPP_INCLUDED
#define UTIL_PERCENT_HPP_INCLUDED
#include "util/Ascii.hpp"

#include <string>
#include <string_view>

namespace util {

/** Whether two hexadecimal digits follow the percent sign at an index (RFC 3986). */
inline bool isEscape(std::string_view text, std::size_t at) {
    return text[at] == '%' && text.size() - at > 2 && ascii::hexDigit(text[at + 1]) >= 0 &&
           ascii::hexDigit(text[at + 2]) >= 0;
}

/** Decodes percent-encoding. A percent sign without two hexadecimal digits is copied as it is. */
inline std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isEscape(text, i)) {
            decoded += static_cast<char>(ascii::hexDigit(text[i + 1]) << 4 | ascii::hexDigit(text[i + 2]));
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

} // namespace util
#endif
