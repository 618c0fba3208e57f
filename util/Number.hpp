#ifndef UTIL_NUMBER_HPP_INCLUDED
#define UTIL_NUMBER_HPP_INCLUDED
#include <charconv>
#include <optional>
#include <string_view>

namespace util {

/** The number that a whole text spells; nothing if the text is anything else, or T cannot hold the number. */
template <class T>
std::optional<T> number(std::string_view text, int base = 10) {
    T value{};
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && next == end ? std::optional<T>(value) : std::nullopt;
}

} // namespace util
#endif
