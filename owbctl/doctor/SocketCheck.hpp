#ifndef OWBCTL_DOCTOR_SOCKETCHECK_HPP
#define OWBCTL_DOCTOR_SOCKETCHECK_HPP

#include "doctor/Check.hpp"

#include <string>

namespace owbctl {

/** Whether a Unix-domain socket exists at `path`, its owner, and the process that listens on it. Connects,
 * but sends nothing. */
Check checkSocket(const std::string& path);

} // namespace owbctl
#endif
