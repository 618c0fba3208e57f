#ifndef OPENWBEM_CLIENT_HTTP_CLIENT_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_CLIENT_HPP_INCLUDED
#include "client/Authentication.hpp"
#include "client/Endpoint.hpp"
#include "client/HTTPReply.hpp"

#include <memory>
#include <string>

namespace OpenWBEM {

/** A request for an operation (DSP0200), in either encoding. */
struct HTTPRequest {
    const char* contentType;
    /** Name of the operation. */
    std::string cimMethod;
    /** The namespace, not percent-encoded. */
    std::string cimObject;
    /** Whether the request must announce protocol version 1.1. */
    bool isVersion11;
    std::string body;
    /** Whether the operation may run twice. Only then is the request repeated when its outcome is unknown. */
    bool mayRepeat;
};

/**
 * Sends requests to one object manager, over one connection that it keeps and reconnects on demand. A failure
 * does not affect the next request. Starts no thread and changes no signal disposition.
 */
class HTTPClient {
public:
    /** Resolves the host but does not connect. Throws what endpointOf() throws, and SSLException if the URL
     * needs TLS, which cannot be loaded. */
    HTTPClient(const URL& url, const ClientAuthCBIFCRef& callback);

    /**
     * Sends a request and returns the reply, whose body the caller reads next. Falls back to POST if the
     * object manager does not support M-POST, and sends credentials on demand. The client must outlive the
     * reply.
     *
     * If the kept connection has ended since the last reply, the client reconnects before it sends. If the
     * connection ends instead of replying, the client reconnects once and repeats the request, provided that
     * the request may be repeated; else the outcome is unknown and the call fails.
     *
     * Throws SocketException or SSLException if it cannot connect; HTTPException ("Unable to process request:
     * " and the reason) if there is no reply or an error response, and if a header value contains control
     * characters.
     */
    std::unique_ptr<HTTPReply> exchange(const HTTPRequest& request);

private:
    std::unique_ptr<Stream> connect() const;
    std::unique_ptr<HTTPReply> send(const HTTPRequest& request, const std::string& authorization);
    std::unique_ptr<HTTPReply> sendOn(std::unique_ptr<Stream> connection, const HTTPRequest& request,
                                      const std::string& authorization);

    const std::string m_host;
    const Endpoint m_endpoint;
    const Authentication m_authentication;
    std::unique_ptr<Stream> m_kept; // ready for the next request; may be null
    bool m_usesExtension = true;    // M-POST, until the object manager rejects it
};

} // namespace OpenWBEM
#endif
