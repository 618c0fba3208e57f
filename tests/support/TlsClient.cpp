#include "support/TlsClient.hpp"

#include <openssl/err.h>

namespace support {
namespace {

const unsigned experimentalExtension = 65280;

int addBytes(SSL*, unsigned, unsigned, const unsigned char** bytes, std::size_t* size, X509*, std::size_t,
             int*, void* extension) {
    const auto& text = *static_cast<const std::string*>(extension);
    *bytes = reinterpret_cast<const unsigned char*>(text.data());
    *size = text.size();
    return 1;
}

/** @param extension bytes of an additional extension; empty: none. The context refers to it. */
SSL_CTX* makeContext(int version, std::string& extension) {
    SSL_CTX* const context = ::SSL_CTX_new(::TLS_client_method());
    ::SSL_CTX_set_min_proto_version(context, version);
    ::SSL_CTX_set_max_proto_version(context, version);
    if (!extension.empty())
        ::SSL_CTX_add_custom_ext(context, experimentalExtension, SSL_EXT_CLIENT_HELLO, addBytes, nullptr,
                                 &extension, nullptr, nullptr);
    return context;
}

} // namespace

TlsClient::TlsClient(int version, std::size_t extensionSize)
    : m_extension(extensionSize, '\0')
    , m_context(makeContext(version, m_extension), ::SSL_CTX_free)
    , m_ssl(::SSL_new(m_context.get()), ::SSL_free)
    , m_in(::BIO_new(::BIO_s_mem()))
    , m_out(::BIO_new(::BIO_s_mem())) {
    ::SSL_set_bio(m_ssl.get(), m_in, m_out);
    ::SSL_set_connect_state(m_ssl.get());
    continueHandshake();
}

const std::string& TlsClient::continueHandshake() {
    ::ERR_clear_error();
    const int result = ::SSL_do_handshake(m_ssl.get());
    if (result != 1 && ::SSL_get_error(m_ssl.get(), result) == SSL_ERROR_SSL) {
        const char* const reason = ::ERR_reason_error_string(::ERR_get_error());
        m_failure = reason ? reason : "unknown error";
    }
    return m_failure;
}

void TlsClient::take(std::string_view bytes) {
    ::BIO_write(m_in, bytes.data(), static_cast<int>(bytes.size()));
    if (!isConnected())
        continueHandshake();
}

std::string TlsClient::bytesToSend() {
    std::string bytes(::BIO_ctrl_pending(m_out), '\0');
    ::BIO_read(m_out, bytes.data(), static_cast<int>(bytes.size()));
    return bytes;
}

std::string TlsClient::encrypted(std::string_view bytes) {
    ::SSL_write(m_ssl.get(), bytes.data(), static_cast<int>(bytes.size()));
    return bytesToSend();
}

std::string TlsClient::received() {
    ::ERR_clear_error();
    std::string all;
    char bytes[16 * 1024];
    for (int n = 0; (n = ::SSL_read(m_ssl.get(), bytes, sizeof bytes)) > 0;)
        all.append(bytes, static_cast<std::size_t>(n));
    return all;
}

void TlsClient::renegotiate() {
    ::SSL_renegotiate(m_ssl.get());
    continueHandshake();
}

} // namespace support
