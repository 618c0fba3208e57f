#ifndef OPENWBEM_CLIENT_HTTP_CLIENT_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_CLIENT_HPP_INCLUDED
#include "client/Authentication.hpp"
#include "client/Endpoint.hpp"
#include "client/HTTPReply.hpp"
#include "client/HTTPRequest.hpp"

#include <memory>
#include <string>

namespace OpenWBEM {

/**
 * Sends requests to one object manager, over one connection that it keeps and opens anew when needed. After
 * any failure the next request begins afresh. Starts no thread and touches no signal.
 */
class HTTPClient {
public:
    /** Looks up the host but connects nothing. Throws what endpointOf() does, SSLException without TLS. */
    HTTPClient(const URL& url, const ClientAuthCBIFCRef& callback);

    /**
     * Sends a request, with POST if the object manager does not know M-POST and with credentials if it asks
     * for them, and returns its reply, of which the body is to be read next. The client must outlive it.
     *
     * A kept connection that has ended since the last reply is replaced before anything is sent. One that
     * ends instead of replying is replaced once if the request may be carried out twice. Nobody knows what
     * became of any other request; that is an error.
     *
     * Throws SocketException or SSLException when there is no connection, HTTPException when there is no
     * reply, or a refusal ("Unable to process request: " and the reason).
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
    std::unique_ptr<Stream> m_kept; // ready for a request; null when there is none
    bool m_usesExtension = true;    // M-POST, until the object manager refuses it
};

} // namespace OpenWBEM
#endif
