#ifndef OWBCTL_COMMANDS_DOCTOR_HPP
#define OWBCTL_COMMANDS_DOCTOR_HPP

#include "agent/Trace.hpp"
#include "formats/Format.hpp"

#include <string>

namespace owbctl {

/**
 * The command doctor: checks everything that a read needs, and writes each check before the next one starts.
 * `url` is the URL that is set. The library must trace to `trace`, which holds the reasons for failures.
 * Returns the exit status: exitFailed if a check failed, else 0.
 */
int runChecks(const std::string& url, const agent::Trace& trace, Format& format);

} // namespace owbctl
#endif
