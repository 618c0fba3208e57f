#include "http/Stream.hpp"

#include <boost/asio/error.hpp>
#include <openssl/err.h>
#include <openssl/x509v3.h>

namespace http {

namespace ssl = boost::asio::ssl;
using boost::system::error_code;

namespace {

struct Deleter {
    void operator()(X509* certificate) const { ::X509_free(certificate); }
    void operator()(unsigned char* text) const { ::OPENSSL_free(text); }
};

bool isReason(const error_code& error, int reason) {
    return error.category() == boost::asio::error::get_ssl_category() &&
           ERR_GET_REASON(static_cast<unsigned long>(error.value())) == reason;
}

std::string failureOf(SSL* ssl, const error_code& error) {
    if (error == ssl::error::stream_truncated || error == boost::asio::error::eof)
        return "the client closed the connection";
    if (isReason(error, SSL_R_HTTP_REQUEST))
        return "the client uses HTTP without TLS";
    const long verification = ::SSL_get_verify_result(ssl);
    if (isReason(error, SSL_R_CERTIFICATE_VERIFY_FAILED) && verification != X509_V_OK)
        return std::string("certificate of the client rejected: ") +
               ::X509_verify_cert_error_string(verification);
    if (error.category() != boost::asio::error::get_ssl_category())
        return error.message();
    const char* const reason = ::ERR_reason_error_string(static_cast<unsigned long>(error.value()));
    return reason ? reason : "unknown error";
}

/** The only common name of a subject, in UTF-8; empty if it has none, several, or one with a NUL. */
std::string commonName(const X509_NAME* subject) {
    const int at = ::X509_NAME_get_index_by_NID(subject, NID_commonName, -1);
    if (at < 0 || ::X509_NAME_get_index_by_NID(subject, NID_commonName, at) >= 0)
        return std::string();
    unsigned char* bytes = nullptr;
    const int size =
        ::ASN1_STRING_to_UTF8(&bytes, ::X509_NAME_ENTRY_get_data(::X509_NAME_get_entry(subject, at)));
    if (size <= 0)
        return std::string();
    const std::unique_ptr<unsigned char, Deleter> owner(bytes);
    std::string name(bytes, bytes + size);
    return name.find('\0') == std::string::npos ? name : std::string();
}

} // namespace

Stream::Stream(Socket socket, TlsContext* tls)
    : m_socket(std::move(socket)) {
    if (tls)
        m_tls.emplace(m_socket, *tls);
}

bool Stream::hasTls() const {
    return m_tls.has_value();
}

void Stream::shakeHands(Done done) {
    m_tls->async_handshake(ssl::stream_base::server, [this, done = std::move(done)](const error_code& error) {
        m_isReady = !error;
        done(error ? std::optional(failureOf(m_tls->native_handle(), error)) : std::nullopt);
    });
}

std::string Stream::subject() {
    if (!m_tls || !m_isReady)
        return std::string();
    const std::unique_ptr<X509, Deleter> certificate(::SSL_get_peer_certificate(m_tls->native_handle()));
    return certificate ? commonName(::X509_get_subject_name(certificate.get())) : std::string();
}

void Stream::cancel() {
    error_code ignored;
    m_socket.cancel(ignored);
}

void Stream::close(std::shared_ptr<const void> owner) {
    // Asio sends at once what the socket takes. Then it would wait for the client's close_notify; the end of
    // the connection ends that.
    if (m_tls && m_isReady)
        m_tls->async_shutdown([owner = std::move(owner)](const error_code&) {});
    error_code ignored;
    m_socket.shutdown(Socket::shutdown_both, ignored);
    m_socket.close(ignored);
}

} // namespace http
