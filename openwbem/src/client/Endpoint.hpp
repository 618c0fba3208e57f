#ifndef OPENWBEM_CLIENT_ENDPOINT_HPP_INCLUDED
#define OPENWBEM_CLIENT_ENDPOINT_HPP_INCLUDED
#include "OW_URL.hpp"

#include <string>

namespace OpenWBEM {

/**
 * Path of the Unix-domain socket that a URL names: the built-in one for the port "owipc" or the scheme "ipc",
 * else the percent-decoded port. Throws MalformedURLException for a bad escape, for a path that is too long
 * for a socket, for a TCP port and for a protocol other than owbinary, none of which this client can reach.
 */
std::string socketPath(const URL& url);

/** Whether the host of a URL is this one, by name or loopback address, so that local authentication applies.
 */
bool isLocalHost(const URL& url);

} // namespace OpenWBEM
#endif
