#ifndef UTIL_DECIMAL_HPP_INCLUDED
#define UTIL_DECIMAL_HPP_INCLUDED
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>
#include <type_traits>

namespace util {

/**
 * The non-negative number that a whole text is, in decimal digits: no sign, no blanks, no other base. Nothing
 * for any other text and for a number that the type cannot hold.
 */
template <class Integer>
std::optional<Integer> decimal(std::string_view text) {
    std::make_unsigned_t<Integer> number = 0; // a signed one would accept a minus
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    constexpr auto greatest = static_cast<std::make_unsigned_t<Integer>>(std::numeric_limits<Integer>::max());
    if (error != std::errc() || rest != end || number > greatest)
        return std::nullopt;
    return static_cast<Integer>(number);
}

} // namespace util
#endif
