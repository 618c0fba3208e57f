#ifndef OPENWBEM_CLIENT_TLS_SOCKET_HPP_INCLUDED
#define OPENWBEM_CLIENT_TLS_SOCKET_HPP_INCLUDED
#include "client/Socket.hpp"

#include <memory>

namespace OpenWBEM {

/** Loads TLS, once. Throws SSLException if that fails, or if this library was built without TLS. */
void requireTls();

/**
 * Performs a TLS handshake, version 1.2 or later, over a connection to an endpoint.
 *
 * Verifies the certificate of the server: its chain up to a trusted one, its period, its purpose, and that it
 * is for the host of the endpoint. The environment selects the trusted certificates, the certificate of the
 * client, and may switch the verification off (TlsSettings.hpp), which is traced for each connection.
 *
 * Throws SSLException if the handshake fails, SocketTimeoutException at the deadline. The stream throws
 * SSLException for an invalid record and a fatal alert; an end without a close_notify alert is an end like
 * any other, since HTTP frames all replies that the client reads.
 */
std::unique_ptr<Stream> startTls(std::unique_ptr<Socket> plain, const Endpoint& endpoint,
                                 const Deadline& deadline);

} // namespace OpenWBEM
#endif
