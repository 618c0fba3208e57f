#ifndef OPENWBEM_CLIENT_TLS_SOCKET_HPP_INCLUDED
#define OPENWBEM_CLIENT_TLS_SOCKET_HPP_INCLUDED
#include "client/Stream.hpp"

#include <memory>
#include <string>

namespace OpenWBEM {

/** Throws SSLException if this library was built without TLS. */
void requireTls();

/**
 * Performs a TLS handshake, version 1.2 or later, over a plain connection.
 *
 * Does NOT verify the certificate of the server: TLS prevents eavesdropping, not impersonation. Object
 * managers use self-signed certificates, which no certificate store contains.
 *
 * @param serverName sent to the server unless empty (RFC 6066, server_name)
 * Throws SSLException if the handshake fails, SocketTimeoutException at the deadline.
 */
std::unique_ptr<Stream> startTls(std::unique_ptr<Stream> plain, const std::string& serverName,
                                 const Deadline& deadline);

} // namespace OpenWBEM
#endif
