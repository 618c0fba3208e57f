#include "output/Text.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace owbctl {
namespace {

struct Character {
    std::uint32_t codePoint;
    std::size_t length; // in bytes; 0 when the text does not begin with a valid sequence
};

std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead < 0xc0 || lead > 0xf7)
        return 0;
    return lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

bool isValid(const Character& character) {
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character.codePoint >= 0xd800 && character.codePoint <= 0xdfff;
    return character.codePoint >= smallest[character.length] && character.codePoint <= 0x10ffff && !surrogate;
}

Character firstCharacter(std::string_view text) {
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

bool isControl(std::uint32_t codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7f && codePoint < 0xa0);
}

std::string escaped(std::string_view bytes) {
    if (bytes == "\n")
        return "\\n";
    if (bytes == "\r")
        return "\\r";
    if (bytes == "\t")
        return "\\t";
    std::string result;
    for (const char byte : bytes) {
        char code[5];
        std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned char>(byte));
        result += code;
    }
    return result;
}

} // namespace

std::string printable(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const std::string_view bytes = text.substr(0, std::max<std::size_t>(character.length, 1));
        if (character.length == 0 || isControl(character.codePoint))
            result += escaped(bytes);
        else
            result += bytes;
        text.remove_prefix(bytes.size());
    }
    return result;
}

std::string utc(std::time_t time) {
    char text[32];
    std::tm parts{};
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", gmtime_r(&time, &parts));
    return text;
}

std::size_t width(std::string_view text) {
    const auto startsCharacter = [](char byte) { return (byte & 0xc0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), startsCharacter));
}

std::string validUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        result += character.length == 0 ? std::string_view("\xef\xbf\xbd") : text.substr(0, length);
        text.remove_prefix(length);
    }
    return result;
}

std::string cut(std::string_view text, std::size_t columns) {
    if (width(text) <= columns)
        return std::string(text);
    std::string result;
    for (std::size_t kept = 1; kept < columns; ++kept) {
        const std::string_view character =
            text.substr(0, std::max<std::size_t>(firstCharacter(text).length, 1));
        result += character;
        text.remove_prefix(character.size());
    }
    return result + (columns > 0 ? "…" : "");
}

std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns) {
    std::string result;
    std::size_t column = indent;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        if (column > indent && columns > 0 && column + 1 + width(word) > columns) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            result += ' ';
            ++column;
        }
        result += word;
        column += width(word);
        text.remove_prefix(std::min(text.size(), word.size() + 1));
    }
    return result;
}

} // namespace owbctl
