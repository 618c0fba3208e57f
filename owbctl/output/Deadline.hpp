#ifndef OWBCTL_OUTPUT_DEADLINE_HPP
#define OWBCTL_OUTPUT_DEADLINE_HPP

#include "output/Output.hpp"

#include <string>

namespace owbctl {

/** The exit status of timeout(1). */
constexpr int exitTimeout = 124;

/**
 * Ends the program after `seconds`, whatever it is doing: writes `message` to standard error and, if nothing
 * was written to the output yet, `document` to it, and exits with exitTimeout. `output` must live until the
 * end of the program. Call this once only.
 */
void endAfter(double seconds, std::string message, std::string document, const Output& output);

} // namespace owbctl
#endif
