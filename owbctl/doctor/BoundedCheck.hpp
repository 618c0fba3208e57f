#ifndef OWBCTL_DOCTOR_BOUNDEDCHECK_HPP
#define OWBCTL_DOCTOR_BOUNDEDCHECK_HPP

#include "doctor/Check.hpp"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace owbctl {

/** When all checks must have ended; nothing for no limit. */
using CheckDeadline = std::optional<std::chrono::steady_clock::time_point>;

/**
 * Makes checks in a child process, since a call of the library that waits cannot be interrupted. Kills the
 * child at the deadline and returns nothing then. The state of the library in this process does not change.
 * Throws std::runtime_error if there is no child process, or if it ends early.
 */
std::optional<std::vector<Check>> checksBefore(const CheckDeadline& deadline,
                                               const std::function<std::vector<Check>()>& checks);

} // namespace owbctl
#endif
