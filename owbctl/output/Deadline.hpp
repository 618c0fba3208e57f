#ifndef OWBCTL_OUTPUT_DEADLINE_HPP
#define OWBCTL_OUTPUT_DEADLINE_HPP

#include "output/Output.hpp"

#include <string>

namespace owbctl {

/** The exit status of timeout(1). */
constexpr int exitTimeout = 124;

/**
 * Ends the program, wherever it is, when `seconds` have passed: with exitTimeout, `message` on standard error
 * and, unless something stands there already, `document` on the output, which must live until the end. Call
 * it once only.
 */
void endAfter(double seconds, std::string message, std::string document, const Output& output);

} // namespace owbctl
#endif
