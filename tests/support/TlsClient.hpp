#ifndef TESTS_SUPPORT_TLS_CLIENT_HPP
#define TESTS_SUPPORT_TLS_CLIENT_HPP
#include <cstddef>
#include <memory>
#include <openssl/ssl.h>
#include <string>
#include <string_view>

namespace support {

/** The client's side of a TLS connection. The test carries the bytes, so it can cut and change them. */
class TlsClient {
public:
    /**
     * @param version the only one: TLS1_2_VERSION or TLS1_3_VERSION
     * @param extensionSize bytes of an additional extension in the first message, to make it long; 0: none
     */
    explicit TlsClient(int version = TLS1_3_VERSION, std::size_t extensionSize = 0);
    TlsClient(const TlsClient&) = delete;
    TlsClient& operator=(const TlsClient&) = delete;

    /** Reads bytes of the server, and goes on with the handshake. */
    void take(std::string_view bytes);
    /** The bytes that the server is to get next: at first the first flight. Each byte is returned once. */
    std::string bytesToSend();
    bool isConnected() const { return ::SSL_is_init_finished(m_ssl.get()) == 1; }
    /** The error that has ended the handshake, in OpenSSL's words; empty if none has. */
    const std::string& failure() const { return m_failure; }
    /** Encrypts bytes of the application. */
    std::string encrypted(std::string_view bytes);
    /** The bytes of the application that have arrived since the last call. */
    std::string received();
    /** Begins another handshake; TLS 1.2. */
    void renegotiate();
    /** Goes on with a handshake. Returns failure(). */
    const std::string& continueHandshake();

private:
    std::string m_extension;
    const std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> m_context;
    const std::unique_ptr<SSL, void (*)(SSL*)> m_ssl;
    BIO* m_in;  // owned by m_ssl
    BIO* m_out; // owned by m_ssl
    std::string m_failure;
};

} // namespace support
#endif
