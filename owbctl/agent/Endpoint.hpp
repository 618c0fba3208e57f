#ifndef OWBCTL_AGENT_ENDPOINT_HPP
#define OWBCTL_AGENT_ENDPOINT_HPP

#include <string>

namespace owbctl {

/** What a URL of an object manager names. */
struct Endpoint {
    /** "binary protocol" or "CIM-XML". */
    const char* protocol;
    std::string host;
    /** A number, or "owipc" for the client library's own socket; as in the URL. */
    std::string port;
    /** Of a Unix-domain socket, decoded; empty when the port is none. */
    std::string socketPath;
};

/** Takes apart a URL that the client library has accepted, see connectAnew(). */
Endpoint endpointOf(const std::string& url);

} // namespace owbctl
#endif
