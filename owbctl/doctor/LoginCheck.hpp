#ifndef OWBCTL_DOCTOR_LOGINCHECK_HPP
#define OWBCTL_DOCTOR_LOGINCHECK_HPP

#include "doctor/Check.hpp"

#include <optional>
#include <string>

namespace owbctl {

/**
 * Whether the object manager takes the user and the password of a URL. The library sends them only when it is
 * asked for them, which may be at the first write; this sends them once, in a request that changes nothing.
 * Nothing for a URL without a user, of a socket or of TLS.
 */
std::optional<Check> checkLogin(const std::string& url);

} // namespace owbctl
#endif
