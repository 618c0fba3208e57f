#include "agent/Number.hpp"

#include <charconv>
#include <climits>

namespace owbctl {

std::optional<long> decimal(std::string_view text) {
    unsigned long number = 0; // a minus would be taken for a signed one
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number > LONG_MAX)
        return std::nullopt;
    return static_cast<long>(number);
}

} // namespace owbctl
