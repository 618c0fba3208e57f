#ifndef AGENT_ENDPOINT_HPP
#define AGENT_ENDPOINT_HPP

#include <string>

/** The object manager that the library asks: its URL, the connection to it, and why a request failed. */
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

/** Splits a URL. The client library must have accepted it, see reconnect(): a malformed URL throws an
 * exception of that library. */
Endpoint endpointOf(const std::string& url);

/** `url` with "***" in place of the password. For messages and logs, not for the library. */
std::string withoutPassword(const std::string& url);

/**
 * Drops the library's client, if there is one, and makes a new one for the URL that is set. Sends nothing:
 * the next request connects. Returns the empty text, or why there is no client, for example a malformed URL.
 * The client is one per process: call this from the thread that calls the library.
 */
std::string reconnect();

/** Whether a status of the library can mean that the connection or the object manager failed. */
bool isConnectionFailure(long status);

/** The meaning of a status other than OWB_DONE, for people. `url` is printed as it is: pass it without
 * password. */
std::string failureText(long status, const std::string& url);

} // namespace agent
#endif
