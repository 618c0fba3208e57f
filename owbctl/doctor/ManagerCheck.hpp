#ifndef OWBCTL_DOCTOR_MANAGERCHECK_HPP
#define OWBCTL_DOCTOR_MANAGERCHECK_HPP

#include "agent/Trace.hpp"
#include "doctor/Check.hpp"

#include <string>

namespace owbctl {

/** Whether the object manager answers a read through the library, and how fast; or why not, as `trace` has
 * it. `url` is for people to read. */
Check checkManager(const std::string& url, const Trace& trace);

} // namespace owbctl
#endif
