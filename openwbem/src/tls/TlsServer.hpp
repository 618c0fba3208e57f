#ifndef OPENWBEM_TLS_TLS_SERVER_HPP_INCLUDED
#define OPENWBEM_TLS_TLS_SERVER_HPP_INCLUDED
#include "client/TlsEngine.hpp"

#include <openssl/ssl.h>

namespace owtls {

/** Describes the server of a connection. @param certificate null if the server has shown none */
TlsServer describe(const SSL* ssl, X509* certificate);

} // namespace owtls
#endif
