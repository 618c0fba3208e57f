#ifndef OWBCTL_DOCTOR_MANAGERCHECKS_HPP
#define OWBCTL_DOCTOR_MANAGERCHECKS_HPP

#include "agent/Trace.hpp"
#include "doctor/Check.hpp"

#include <optional>
#include <string>

/** Checks that ask the object manager. */
namespace owbctl {

/** Whether the object manager answers a read through the library, and how fast; else the reason in `trace`.
 * `url` is printed as it is: pass it without password. */
Check checkManager(const std::string& url, const agent::Trace& trace);

/**
 * Whether the object manager accepts the user and the password of a URL. The library sends them only on
 * request, which may be as late as the first write. This check sends them in a request that changes nothing.
 * Nothing for a URL without a user, and for one of a Unix-domain socket or of TLS.
 */
std::optional<Check> checkLogin(const std::string& url);

} // namespace owbctl
#endif
