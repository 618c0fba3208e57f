#ifndef UTIL_BASE64_HPP_INCLUDED
#define UTIL_BASE64_HPP_INCLUDED
#include <optional>
#include <string>
#include <string_view>

/** Base64 with the alphabet of RFC 4648, 4: what HTTP's Basic authentication uses (RFC 7617). */
namespace util {

inline constexpr std::string_view base64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/** The encoded text, padded to a multiple of four characters. */
inline std::string base64Encoded(std::string_view bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        unsigned long group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k <= bytes.size() ? base64Alphabet[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

/**
 * The bytes that a text encodes. Padding may be missing; bits after the last whole byte are ignored. Nothing
 * if the text holds another character or has a length that no encoder produces.
 */
inline std::optional<std::string> base64Decoded(std::string_view text) {
    const std::size_t padding = text.size() - (text.find_last_not_of('=') + 1);
    text.remove_suffix(padding);
    if (padding > 2 || text.size() % 4 == 1)
        return std::nullopt;

    std::string bytes;
    unsigned bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        const std::size_t value = base64Alphabet.find(c);
        if (value == std::string_view::npos)
            return std::nullopt;
        bits = (bits << 6 | static_cast<unsigned>(value)) & 0xFFFF;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xFF);
        }
    }
    return bytes;
}

} // namespace util
#endif
