#ifndef AGENT_NUMBER_HPP
#define AGENT_NUMBER_HPP

#include <optional>
#include <string_view>

namespace owbctl {

/** The number, from 0 to LONG_MAX, that all of `text` is: decimal digits only, neither signs nor blanks nor
 * other bases. Nothing for any other text. */
std::optional<long> decimal(std::string_view text);

} // namespace owbctl
#endif
