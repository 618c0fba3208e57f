#include "Utf8.hpp"

#include "CaseFolds.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace OpenWBEM {
namespace {

// Characters of two, three and four bytes: the fixed bits of the first byte, and the lowest code that needs
// so many bytes.
struct Form {
    unsigned char mask;
    unsigned char lead;
    char32_t lowest;
};
const Form forms[] = {
    {0xE0, 0xC0, 0x80},
    {0xF0, 0xE0, 0x800},
    {0xF8, 0xF0, 0x10000},
};

bool isAscii(char c) {
    return static_cast<signed char>(c) >= 0;
}

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
        if (taken < tail || code < form.lowest || !isCharacter(code))
            break;
        text += tail;
        return code;
    }
    return malformedByte + first;
}

char32_t foldCase(char32_t code) {
    const CaseFolds* const after =
        std::upper_bound(std::begin(caseFolds), std::end(caseFolds), code,
                         [](char32_t sought, const CaseFolds& folds) { return sought < folds.first; });
    if (after == std::begin(caseFolds))
        return code;
    const CaseFolds& folds = *std::prev(after);
    const bool folded = code <= folds.last && (code - folds.first) % folds.step == 0;
    return folded ? code + static_cast<char32_t>(folds.distance) : code;
}

int compareIgnoringCase(const char* a, const char* b) {
    char32_t left = 0;
    char32_t right = 0;
    do {
        if (isAscii(*a) && isAscii(*b)) {
            left = static_cast<unsigned char>(ascii::toLower(*a++));
            right = static_cast<unsigned char>(ascii::toLower(*b++));
        } else {
            left = foldCase(takeUtf8(a));
            right = foldCase(takeUtf8(b));
        }
    } while (left == right && left != 0);
    return static_cast<int>(left) - static_cast<int>(right);
}

} // namespace OpenWBEM
