#ifndef OPENWBEM_CLIENT_TLS_SOCKET_HPP_INCLUDED
#define OPENWBEM_CLIENT_TLS_SOCKET_HPP_INCLUDED
#include "client/Stream.hpp"

#include <memory>
#include <string>

namespace OpenWBEM {

/** Throws SSLException when this library was built without TLS. */
void requireTls();

/**
 * A TLS connection over a plain one, of version 1.2 or later, after its handshake.
 *
 * The certificate of the server is NOT verified: it keeps others from listening, not from posing as the
 * server. Object managers come with certificates of their own making, which no store vouches for.
 *
 * @param serverName sent to the server when not empty (RFC 6066, server_name)
 * Throws SSLException when the handshake fails, SocketTimeoutException when the deadline passes.
 */
std::unique_ptr<Stream> startTls(std::unique_ptr<Stream> plain, const std::string& serverName,
                                 const Deadline& deadline);

} // namespace OpenWBEM
#endif
