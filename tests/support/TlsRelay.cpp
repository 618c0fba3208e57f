#include "support/TlsRelay.hpp"

#include "support/Certificates.hpp"

#include <openssl/err.h>
#include <openssl/x509.h>
#include <stdexcept>
#include <sys/socket.h>

namespace support {
namespace {

SSL_CTX* makeContext(const TlsRelayOptions& options) {
    SSL_CTX* const context = ::SSL_CTX_new(::TLS_server_method());
    const std::string file = certificate(options.certificate);
    if (::SSL_CTX_use_certificate_file(context, file.c_str(), SSL_FILETYPE_PEM) != 1 ||
        ::SSL_CTX_use_PrivateKey_file(context, file.c_str(), SSL_FILETYPE_PEM) != 1)
        throw std::runtime_error("cannot load " + file);
    ::SSL_CTX_set_max_proto_version(context, options.highestVersion);
    ::SSL_CTX_clear_mode(context, SSL_MODE_AUTO_RETRY); // a read of an alert must not wait for data
    if (options.demandsCertificate) {
        ::SSL_CTX_load_verify_locations(context, certificate("ca.crt").c_str(), nullptr);
        ::SSL_CTX_set_verify(context, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
    }
    return context;
}

std::string commonName(X509* certificate) {
    char name[64] = "";
    if (certificate)
        ::X509_NAME_get_text_by_NID(::X509_get_subject_name(certificate), NID_commonName, name, sizeof name);
    return name;
}

} // namespace

TlsRelay::TlsRelay(unsigned short serverPort, TlsRelayOptions options)
    : m_options(std::move(options))
    , m_context(makeContext(m_options), ::SSL_CTX_free)
    , m_relay(std::make_unique<Relay>(serverPort, [this](int client, int server) { pump(client, server); })) {
}

TlsRelay::Seen TlsRelay::seen() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_seen;
}

void TlsRelay::pump(int client, int server) {
    SSL* const ssl = ::SSL_new(m_context.get());
    ::SSL_set_fd(ssl, client);
    if (::SSL_accept(ssl) == 1) {
        note(ssl);
        if (m_options.isDeaf)
            awaitEnd(client);
        else
            carry(ssl, client, server);
    }
    ::SSL_free(ssl);
    ::ERR_clear_error();
}

void TlsRelay::note(SSL* ssl) {
    const char* const name = ::SSL_get_servername(ssl, TLSEXT_NAMETYPE_host_name);
    X509* const certificate = ::SSL_get_peer_certificate(ssl);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_seen = {name ? name : "", ::SSL_get_version(ssl), commonName(certificate), false};
    ::X509_free(certificate);
}

void TlsRelay::carry(SSL* ssl, int client, int server) {
    char bytes[16 * 1024];
    while (true) {
        const Readable readable = awaitEither(client, server);
        if (readable.first) {
            const int n = ::SSL_read(ssl, bytes, sizeof bytes);
            if (n > 0)
                ::send(server, bytes, static_cast<std::size_t>(n), MSG_NOSIGNAL);
            else if (::SSL_get_error(ssl, n) != SSL_ERROR_WANT_READ)
                break;
        }
        if (readable.second) {
            const ssize_t n = ::recv(server, bytes, sizeof bytes, 0);
            if (n < 0)
                resetWhenClosed(client);
            if (n <= 0)
                break;
            if (m_options.beforeReply)
                m_options.beforeReply(ssl);
            ::SSL_write(ssl, bytes, static_cast<int>(n));
        }
    }
    if (m_options.saysGoodbye)
        ::SSL_shutdown(ssl);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_seen.goodbye = (::SSL_get_shutdown(ssl) & SSL_RECEIVED_SHUTDOWN) != 0;
}

} // namespace support
