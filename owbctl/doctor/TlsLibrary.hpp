#ifndef OWBCTL_DOCTOR_TLSLIBRARY_HPP
#define OWBCTL_DOCTOR_TLSLIBRARY_HPP

#include "client/TlsEngine.hpp"

#include <memory>
#include <string>

namespace owbctl {

/**
 * The client library's own TLS, for a connection of the doctor: it reads the same environment and verifies
 * servers in the same way. Null if the client library is not ours, or has no TLS.
 *
 * Throws std::runtime_error with the message of the library if that fails.
 *
 * @param isAddress whether the host is an address, without brackets
 */
std::unique_ptr<owtls::TlsEngine> tlsEngine(const std::string& host, bool isAddress);

} // namespace owbctl
#endif
