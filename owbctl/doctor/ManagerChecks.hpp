#ifndef OWBCTL_DOCTOR_MANAGERCHECKS_HPP
#define OWBCTL_DOCTOR_MANAGERCHECKS_HPP

#include "doctor/Check.hpp"

#include <optional>
#include <string>

/** Checks that ask the object manager. */
namespace owbctl {

/** Group that checkManager() reads, the operating system: every object manager has this small instance. */
constexpr long groupOfCheck = 4;

/** Whether the object manager answers a read through the library, and how fast; else the reason. */
Check checkManager();

/**
 * Whether the object manager accepts the user and the password of a URL. The library sends them only on
 * request, which may be as late as the first write. This check sends them in a request that changes nothing,
 * in the protocol and over the connection of the URL, with TLS after the server is verified. Nothing for a
 * URL without a user.
 */
std::optional<Check> checkLogin(const std::string& url);

} // namespace owbctl
#endif
