#ifndef OWBCTL_DOCTOR_TLSCHECK_HPP
#define OWBCTL_DOCTOR_TLSCHECK_HPP

#include "doctor/Check.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** A certificate of the server with fewer days left is a warning. Services that renew certificates do it a
 * month before the end, so that they cause none. */
constexpr int daysOfWarning = 14;

/**
 * Whether a TLS handshake with the object manager of a URL succeeds, with protocol and cipher, or why it
 * fails; and subject, issuer and remaining days of its certificate, also of one that is rejected. Nothing for
 * a URL without TLS, and if no process listens: the check of the object manager reports that.
 */
std::vector<Check> checkTls(const std::string& url);

} // namespace owbctl
#endif
