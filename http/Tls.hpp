#ifndef HTTP_TLS_HPP_INCLUDED
#define HTTP_TLS_HPP_INCLUDED
#ifdef HTTP_HAS_TLS
#include <boost/asio/ssl/context.hpp>
#endif
#include <memory>
#include <string>

namespace http {

#ifdef HTTP_HAS_TLS
using TlsContext = boost::asio::ssl::context;
constexpr bool isBuiltWithTls = true;
#else
/** Has no objects: this build is without TLS. */
class TlsContext;
constexpr bool isBuiltWithTls = false;
#endif

/** Files of a server with TLS, in the form PEM. */
struct TlsFiles {
    /** The server's certificate, and those of its intermediate issuers. */
    std::string certificate{};
    /** The private key of the certificate, not encrypted. */
    std::string key{};
    /** Issuers of clients' certificates, which are then required. Empty: no client needs a certificate. */
    std::string clientAuthorities{};
};

/**
 * Reads the files of a server, which offers TLS 1.2 and 1.3, security level 2 or more of OpenSSL, and neither
 * renegotiation nor session resumption. Connections keep the files with which they began.
 *
 * Throws std::runtime_error `<path>: <why>`, also for a key that others may read or change. In a build
 * without TLS it throws always.
 */
std::shared_ptr<TlsContext> readTlsFiles(const TlsFiles& files);

} // namespace http
#endif
