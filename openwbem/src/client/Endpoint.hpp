#ifndef OPENWBEM_CLIENT_ENDPOINT_HPP_INCLUDED
#define OPENWBEM_CLIENT_ENDPOINT_HPP_INCLUDED
#include "OW_URL.hpp"

#include <string>
#include <sys/socket.h>

namespace OpenWBEM {

/** The address of an object manager. */
struct Endpoint {
    /** Path of a Unix-domain socket; empty for TCP. */
    std::string path;
    /** The address to connect to, TCP or Unix-domain. */
    sockaddr_storage address{};
    socklen_t addressSize = 0;
    bool usesTls = false;
    /** Host of the URL, a name or an address without brackets. The certificate of a TLS server is for it. */
    std::string host;
    bool hostIsAddress = false;
};

/**
 * Resolves a URL. The port "owipc" and the scheme "ipc" mean the built-in Unix-domain socket, a decimal port
 * means TCP, any other port is the percent-encoded path of a Unix-domain socket. A scheme that ends in "s"
 * means TLS.
 *
 * Resolves the host of a TCP address: the first IPv4 address of a name, or an IPv6 address in brackets.
 * Throws UnknownHostException with the host as its message, UnescapeCharForURLException for an invalid
 * escape, MalformedURLException for an invalid socket path.
 */
Endpoint endpointOf(const URL& url);

/** Whether the scheme or the namespace of a URL selects the binary protocol; the default is CIM-XML. */
bool speaksBinary(const URL& url);

/** Whether the host of a URL is "localhost" or 127.0.0.1, so that local authentication applies. */
bool isLocalHost(const URL& url);

} // namespace OpenWBEM
#endif
