#ifndef AGENT_ENDPOINT_HPP
#define AGENT_ENDPOINT_HPP

#include <string>

/** The object manager that the library asks: its URL, and what it means. */
namespace agent {

/** The parts of a URL. */
struct Endpoint {
    static constexpr const char* ownSocket = "owipc";

    /** "binary protocol" or "CIM-XML". Static. */
    const char* protocol;
    std::string host;
    /** As in the URL; Endpoint::ownSocket for the client library's own socket. */
    std::string port;
    /** Decoded path of a Unix-domain socket; empty if the port is none. */
    std::string socketPath;
};

/** Splits a URL. A malformed URL throws an exception of the client library. */
Endpoint endpointOf(const std::string& url);

/** `url` with "***" in place of the password. For messages and logs, not for the library. */
std::string withoutPassword(const std::string& url);

/** URL of the Unix-domain socket at a path, for the binary protocol. */
std::string urlOfSocket(const std::string& path);

/** The URL that a text means: "unix:PATH" is the socket at PATH, any other text is a URL. */
std::string urlOf(const std::string& text);

/** Why no object manager can listen on the port of a URL: a number beyond 65535, which the library takes for
 * the name of a socket, or 0. Empty for a valid port, and for a malformed URL. */
std::string portError(const std::string& url);

/** The other end of the connection for a URL: the path of a socket, or "host port 5988". Never with a
 * password. */
std::string peerName(const std::string& url);

} // namespace agent
#endif
