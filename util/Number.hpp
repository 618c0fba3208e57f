#ifndef UTIL_NUMBER_HPP_INCLUDED
#define UTIL_NUMBER_HPP_INCLUDED
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>
#include <type_traits>

namespace util {

/** The number that a whole text spells; nothing if the text is anything else, or T cannot hold the number. */
template <class T>
std::optional<T> number(std::string_view text, int base = 10) {
    T value{};
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && next == end ? std::optional<T>(value) : std::nullopt;
}

/** Like number(), for a floating-point number: digits with a point or an exponent, or "inf" or "nan". */
inline std::optional<double> realNumber(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && next == end ? std::optional<double>(value) : std::nullopt;
}

/** Like number(), but in decimal and without a sign. */
template <class Integer>
std::optional<Integer> decimal(std::string_view text) {
    using Unsigned = std::make_unsigned_t<Integer>; // a signed one would accept a minus
    const std::optional<Unsigned> value = number<Unsigned>(text);
    if (!value || *value > static_cast<Unsigned>(std::numeric_limits<Integer>::max()))
        return std::nullopt;
    return static_cast<Integer>(*value);
}

} // namespace util
#endif
