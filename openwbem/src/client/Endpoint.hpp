#ifndef OPENWBEM_CLIENT_ENDPOINT_HPP_INCLUDED
#define OPENWBEM_CLIENT_ENDPOINT_HPP_INCLUDED
#include "OW_URL.hpp"

#include <string>
#include <sys/socket.h>

namespace OpenWBEM {

/** Where an object manager listens. */
struct Endpoint {
    /** Path of a Unix-domain socket; empty for TCP. */
    std::string path;
    /** The address to connect to, of either kind. */
    sockaddr_storage address{};
    socklen_t addressSize = 0;
    bool usesTls = false;
    /** The name that TLS tells the server it is called by (RFC 6066, server_name); empty for an address. */
    std::string serverName;
};

/**
 * The endpoint that a URL names. The port "owipc" and the scheme "ipc" stand for the built-in Unix-domain
 * socket, a decimal port for TCP to the host, and any other port for a Unix-domain socket whose path it is,
 * percent-encoded. A scheme that ends in "s" asks for TLS.
 *
 * The host of a TCP address is looked up here: a name as IPv4, of whose addresses the first is taken; IPv6
 * addresses stand in brackets. Throws UnknownHostException with the host as its message,
 * UnescapeCharForURLException for a bad escape, MalformedURLException for a path that no socket can have.
 */
Endpoint endpointOf(const URL& url);

/** Whether the scheme or the namespace of a URL asks for the binary protocol; all others mean CIM-XML. */
bool speaksBinary(const URL& url);

/** Whether the host of a URL is this one, by name or loopback address, so that local authentication applies.
 */
bool isLocalHost(const URL& url);

} // namespace OpenWBEM
#endif
