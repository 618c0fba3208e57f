#ifndef OPENWBEM_TLS_TLS_CONTEXT_HPP_INCLUDED
#define OPENWBEM_TLS_TLS_CONTEXT_HPP_INCLUDED
#include "client/TlsSettings.hpp"

#include <memory>
#include <openssl/ssl.h>
#include <string>

namespace owtls {

struct TlsContextDeleter {
    void operator()(SSL_CTX* context) const { ::SSL_CTX_free(context); }
};
using TlsContext = std::unique_ptr<SSL_CTX, TlsContextDeleter>;

/**
 * Makes the context of a client: TLS 1.2 and 1.3 at security level 2 (keys of at least 112 bits, RSA 2048),
 * no renegotiation. The configuration of OpenSSL can only restrict that further.
 *
 * Null if a certificate or a key cannot be loaded: failure then names the file and the reason. Never asks for
 * a passphrase: an encrypted key cannot be loaded.
 */
TlsContext makeTlsContext(const TlsSettings& settings, std::string& failure);

} // namespace owtls
#endif
