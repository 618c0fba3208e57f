#ifndef OWBCTL_COMMANDS_DOCTOR_HPP
#define OWBCTL_COMMANDS_DOCTOR_HPP

#include "formats/Format.hpp"

#include <string>

namespace owbctl {

/**
 * The command doctor: checks everything that a read needs, and writes each check before the next one starts.
 * The checks that need no object manager come first. After `seconds`, if they are not 0, the check that waits
 * is reported as failed and those that follow it are left out. `url` is the URL that is set. Returns the exit
 * status: exitTimeout if the time was over; exitFailed if a check failed; else 0.
 */
int runChecks(const std::string& url, double seconds, Format& format);

} // namespace owbctl
#endif
