#ifndef AGENT_ENDPOINT_HPP
#define AGENT_ENDPOINT_HPP

#include <string>

namespace owbctl {

/** What a URL of an object manager names. */
struct Endpoint {
    static constexpr const char* ownSocket = "owipc";

    /** "binary protocol" or "CIM-XML". */
    const char* protocol;
    std::string host;
    /** As in the URL; Endpoint::ownSocket for the client library's own socket. */
    std::string port;
    /** Of a Unix-domain socket, decoded; empty when the port is none. */
    std::string socketPath;
};

/** Takes apart a URL that the client library has accepted, see connectAnew(). */
Endpoint endpointOf(const std::string& url);

/** `url` with the password, if there is one, replaced by "***". For people and logs to read, not for the
 * library. */
std::string withoutPassword(const std::string& url);

} // namespace owbctl
#endif
