#ifndef OWBCTL_DOCTOR_SOCKETCHECK_HPP
#define OWBCTL_DOCTOR_SOCKETCHECK_HPP

#include "doctor/Check.hpp"

#include <string>

namespace owbctl {

/** Whether there is a Unix-domain socket at `path`, whose it is, and who listens on it. Connects, but sends
 * nothing. */
Check checkSocket(const std::string& path);

} // namespace owbctl
#endif
