#include "protocol/XmlText.hpp"

#include "types/Utf8.hpp"

#include <algorithm>

namespace cimom {
namespace {

const char* const replacement = "\xEF\xBF\xBD"; // U+FFFD

bool isForbidden(char32_t code) {
    const bool isControl = code < ' ' && code != '\t' && code != '\n' && code != '\r';
    const bool isMalformed = code >= OpenWBEM::malformedByte && code <= OpenWBEM::malformedByte + 0xFF;
    return isControl || isMalformed || code == 0xFFFE || code == 0xFFFF;
}

/** Whether a byte is a character that is always allowed. */
bool isPlain(char c) {
    return c >= ' ' && c <= '\x7E';
}

} // namespace

void replaceForbidden(std::string& document, std::size_t from) {
    const auto begin = document.begin() + static_cast<std::ptrdiff_t>(from);
    const auto first = std::find_if_not(begin, document.end(), isPlain);
    if (first == document.end())
        return;
    const auto kept = static_cast<std::size_t>(first - document.begin());
    std::string clean;
    const char* at = document.c_str() + kept;
    const char* const end = document.c_str() + document.size();
    while (at < end) {
        const char* const character = at;
        if (isForbidden(OpenWBEM::takeUtf8(at)))
            clean += replacement;
        else
            clean.append(character, at);
    }
    document.replace(kept, std::string::npos, clean);
}

} // namespace cimom
