#include "client/TlsSocket.hpp"

#include "OW_SSLException.hpp"

#include <openssl/err.h>
#include <openssl/ssl.h>

namespace OpenWBEM {
namespace {

const std::size_t pieceSize = 16 * 1024; // maximum size of a TLS record

[[noreturn]] void throwFailed() {
    char reason[256] = "the peer closed the connection";
    if (const unsigned long code = ::ERR_get_error())
        ::ERR_error_string_n(code, reason, sizeof reason);
    OW_THROW(SSLException, (std::string("TLS handshake failed: ") + reason).c_str());
}

template <class T>
T* checked(T* made) {
    if (!made)
        throwFailed();
    return made;
}

struct Deleter {
    void operator()(SSL_CTX* context) const { ::SSL_CTX_free(context); }
    void operator()(SSL* ssl) const { ::SSL_free(ssl); }
};

// OpenSSL between two buffers in memory. It never accesses the socket, so that deadlines apply and SIGPIPE is
// not raised.
class TlsSocket : public Stream {
public:
    TlsSocket(std::unique_ptr<Stream> plain, const std::string& serverName, const Deadline& deadline)
        : m_plain(std::move(plain))
        , m_context(checked(::SSL_CTX_new(::TLS_client_method()))) {
        ::SSL_CTX_set_min_proto_version(m_context.get(), TLS1_2_VERSION);
        ::SSL_CTX_set_options(m_context.get(), SSL_OP_NO_RENEGOTIATION);
        ::SSL_CTX_set_verify(m_context.get(), SSL_VERIFY_NONE, nullptr);
        m_ssl.reset(checked(::SSL_new(m_context.get())));
        m_incoming = checked(::BIO_new(::BIO_s_mem()));
        m_outgoing = ::BIO_new(::BIO_s_mem());
        ::SSL_set_bio(m_ssl.get(), m_incoming, m_outgoing); // takes ownership of both
        checked(m_outgoing);
        if (!serverName.empty())
            ::SSL_set_tlsext_host_name(m_ssl.get(), serverName.c_str());
        shakeHands(deadline);
    }

    bool send(std::string_view bytes) override {
        while (!bytes.empty()) {
            std::size_t taken = 0;
            ::ERR_clear_error();
            if (::SSL_write_ex(m_ssl.get(), bytes.data(), std::min(bytes.size(), pieceSize), &taken) != 1 ||
                !flush())
                return false;
            bytes.remove_prefix(taken);
        }
        return true;
    }

    std::size_t receive(char* to, std::size_t size, const Deadline& deadline) override {
        while (true) {
            std::size_t received = 0;
            ::ERR_clear_error();
            const int result = ::SSL_read_ex(m_ssl.get(), to, size, &received);
            if (result == 1)
                return received;
            if (!resume(result, deadline))
                return 0;
        }
    }

    bool isQuiet() override {
        return ::SSL_pending(m_ssl.get()) == 0 && ::BIO_ctrl_pending(m_incoming) == 0 && m_plain->isQuiet();
    }

private:
    void shakeHands(const Deadline& deadline) {
        while (true) {
            ::ERR_clear_error();
            const int result = ::SSL_connect(m_ssl.get());
            if (result == 1)
                break;
            if (!resume(result, deadline))
                throwFailed();
        }
        flush();
    }

    // After an unsuccessful call: receives the input that OpenSSL needs. False at the end of the connection,
    // and for an error.
    bool resume(int result, const Deadline& deadline) {
        const bool wantsInput = ::SSL_get_error(m_ssl.get(), result) == SSL_ERROR_WANT_READ;
        flush();
        return wantsInput && fetch(deadline);
    }

    bool flush() {
        char* bytes = nullptr;
        const long size = BIO_get_mem_data(m_outgoing, &bytes);
        const bool isSent =
            size <= 0 || m_plain->send(std::string_view(bytes, static_cast<std::size_t>(size)));
        static_cast<void>(BIO_reset(m_outgoing));
        return isSent;
    }

    bool fetch(const Deadline& deadline) {
        char bytes[pieceSize];
        const std::size_t received = m_plain->receive(bytes, sizeof bytes, deadline);
        return received > 0 && ::BIO_write(m_incoming, bytes, static_cast<int>(received)) > 0;
    }

    const std::unique_ptr<Stream> m_plain;
    const std::unique_ptr<SSL_CTX, Deleter> m_context;
    std::unique_ptr<SSL, Deleter> m_ssl;
    BIO* m_incoming; // encrypted bytes from the peer
    BIO* m_outgoing; // encrypted bytes to the peer
};

} // namespace

void requireTls() {}

std::unique_ptr<Stream> startTls(std::unique_ptr<Stream> plain, const std::string& serverName,
                                 const Deadline& deadline) {
    return std::make_unique<TlsSocket>(std::move(plain), serverName, deadline);
}

} // namespace OpenWBEM
