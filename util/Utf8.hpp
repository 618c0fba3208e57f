#ifndef UTIL_UTF8_HPP_INCLUDED
#define UTIL_UTF8_HPP_INCLUDED
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/** UTF-8 (RFC 3629) from peers, which may be invalid. */
namespace utf8 {

struct Character {
    std::uint32_t codePoint;
    std::size_t length; // in bytes; 0 when the text does not begin with a valid sequence
};

/** Bytes of the sequence that a byte begins; 0 if none begins with it. */
constexpr std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead < 0xc0 || lead > 0xf7)
        return 0;
    return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

/** Whether a character has the shortest form, is no surrogate, and is not beyond U+10FFFF. */
constexpr bool isValid(const Character& character) {
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character.codePoint >= 0xd800 && character.codePoint <= 0xdfff;
    return character.codePoint >= smallest[character.length] && character.codePoint <= 0x10ffff && !surrogate;
}

/** The first character of a text that is not empty. */
inline Character firstCharacter(std::string_view text) {
    const unsigned char lead = static_cast<unsigned char>(text.front());
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || length > text.size())
        return {0, 0};
    Character character{length == 1 ? lead : lead & (0x7fu >> length), length};
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned char next = static_cast<unsigned char>(text[i]);
        if ((next & 0xc0) != 0x80)
            return {0, 0};
        character.codePoint = character.codePoint << 6 | (next & 0x3fu);
    }
    return isValid(character) ? character : Character{0, 0};
}

/** `text` as UTF-8: U+FFFD replaces each byte that belongs to no valid sequence. */
inline std::string valid(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        result += character.length == 0 ? std::string_view("\xef\xbf\xbd") : text.substr(0, length);
        text.remove_prefix(length);
    }
    return result;
}

} // namespace utf8
#endif
