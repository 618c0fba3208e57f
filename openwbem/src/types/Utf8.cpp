#include "Utf8.hpp"

#include <cstddef>

namespace OpenWBEM {
namespace {

// How the first byte of a character tells the number of bytes behind it, and the least code that needs them.
struct Form {
    unsigned char mask;
    unsigned char lead;
    char32_t least;
};
const Form forms[] = {
    {0xE0, 0xC0, 0x80},
    {0xF0, 0xE0, 0x800},
    {0xF8, 0xF0, 0x10000},
};

bool isCharacter(char32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

} // namespace

void appendUtf8(std::string& text, UInt16 code) {
    const auto tail = [&text](unsigned bits) { text += static_cast<char>(0x80 | (bits & 0x3F)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | (code >> 6));
        tail(code);
    } else {
        text += static_cast<char>(0xE0 | (code >> 12));
        tail(static_cast<unsigned>(code >> 6));
        tail(code);
    }
}

char32_t takeUtf8(const char*& text) {
    const auto first = static_cast<unsigned char>(*text++);
    if (first < 0x80)
        return first;
    std::size_t tail = 0;
    for (const Form& form : forms) {
        ++tail;
        if ((first & form.mask) != form.lead)
            continue;
        char32_t code = first & static_cast<unsigned char>(~form.mask);
        std::size_t taken = 0;
        while (taken < tail && (text[taken] & 0xC0) == 0x80) // stops at the NUL
            code = (code << 6) | (text[taken++] & 0x3F);
        if (taken < tail || code < form.least || !isCharacter(code))
            break;
        text += tail;
        return code;
    }
    return malformedByte + first;
}

} // namespace OpenWBEM
