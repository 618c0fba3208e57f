#include "client/TlsSocket.hpp"

#include "OW_SSLException.hpp"
#include "client/TlsContext.hpp"
#include "client/TlsFailure.hpp"
#include "client/Trace.hpp"

#include <algorithm>
#include <openssl/err.h>
#include <openssl/x509v3.h>
#include <string>
#include <utility>

namespace OpenWBEM {
namespace {

const std::size_t pieceSize = 16 * 1024; // maximum size of a TLS record

struct Deleter {
    void operator()(SSL* ssl) const { ::SSL_free(ssl); }
};

// OpenSSL between two buffers in memory. It never accesses the socket, so that deadlines apply and SIGPIPE is
// not raised.
class TlsSocket : public Stream {
public:
    TlsSocket(std::unique_ptr<Socket> plain, const Endpoint& endpoint, const TlsSettings& settings,
              const Deadline& deadline)
        : m_plain(std::move(plain))
        , m_host(endpoint.host)
        , m_context(makeTlsContext(settings))
        , m_ssl(::SSL_new(m_context.get())) {
        check(m_ssl != nullptr);
        m_incoming = ::BIO_new(::BIO_s_mem());
        m_outgoing = ::BIO_new(::BIO_s_mem());
        ::SSL_set_bio(m_ssl.get(), m_incoming, m_outgoing); // takes ownership of both
        check(m_incoming && m_outgoing);
        if (!endpoint.hostIsAddress)
            check(SSL_set_tlsext_host_name(m_ssl.get(), m_host.c_str()) == 1);
        if (settings.verifiesServer)
            verifyServer(endpoint.hostIsAddress);
        shakeHands(deadline);
    }

    ~TlsSocket() override { sayGoodbye(); }

    bool send(std::string_view bytes) override {
        while (!bytes.empty()) {
            std::size_t taken = 0;
            ::ERR_clear_error();
            if (::SSL_write_ex(m_ssl.get(), bytes.data(), std::min(bytes.size(), pieceSize), &taken) != 1 ||
                !flush(nullptr))
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
            const int error = ::SSL_get_error(m_ssl.get(), result);
            flush(&deadline);
            if (error == SSL_ERROR_SSL)
                throwFailed("connection to");
            if (error != SSL_ERROR_WANT_READ || !fetch(deadline))
                return 0;
        }
    }

    bool isQuiet() override {
        return ::SSL_pending(m_ssl.get()) == 0 && ::BIO_ctrl_pending(m_incoming) == 0 && m_plain->isQuiet();
    }

private:
    void verifyServer(bool isAddress) {
        X509_VERIFY_PARAM* const rules = ::SSL_get0_param(m_ssl.get());
        check((isAddress ? ::X509_VERIFY_PARAM_set1_ip_asc(rules, m_host.c_str())
                         : ::X509_VERIFY_PARAM_set1_host(rules, m_host.data(), m_host.size())) == 1);
        ::X509_VERIFY_PARAM_set_hostflags(rules, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
        check(SSL_set_app_data(m_ssl.get(), this) == 1);
        ::SSL_set_verify(m_ssl.get(), SSL_VERIFY_PEER, noteRejection);
    }

    // OpenSSL forgets the certificate that it rejects.
    static int noteRejection(int isAccepted, X509_STORE_CTX* verification) noexcept {
        if (!isAccepted) {
            const void* const ssl =
                ::X509_STORE_CTX_get_ex_data(verification, ::SSL_get_ex_data_X509_STORE_CTX_idx());
            auto* const self = static_cast<TlsSocket*>(SSL_get_app_data(static_cast<const SSL*>(ssl)));
            try {
                self->m_rejection = rejectionOf(verification);
            } catch (const std::bad_alloc&) { // the handshake fails with the reason of OpenSSL
            }
        }
        return isAccepted;
    }

    void shakeHands(const Deadline& deadline) {
        while (true) {
            ::ERR_clear_error();
            const int result = ::SSL_connect(m_ssl.get());
            if (result == 1)
                break;
            const int error = ::SSL_get_error(m_ssl.get(), result);
            flush(&deadline);
            if (error != SSL_ERROR_WANT_READ || !fetch(deadline))
                throwFailed("handshake with");
        }
        m_isOpen = flush(&deadline);
    }

    // Sends what OpenSSL has written. Without a deadline, each wait has its own. False if the peer has closed
    // the connection.
    bool flush(const Deadline* deadline) {
        char* bytes = nullptr;
        const long size = BIO_get_mem_data(m_outgoing, &bytes);
        const std::string_view written(bytes, static_cast<std::size_t>(std::max(size, 0L)));
        const bool isSent = deadline ? m_plain->send(written, *deadline) : m_plain->send(written);
        static_cast<void>(BIO_reset(m_outgoing));
        return isSent;
    }

    bool fetch(const Deadline& deadline) {
        char bytes[pieceSize];
        const std::size_t received = m_plain->receive(bytes, sizeof bytes, deadline);
        return received > 0 && ::BIO_write(m_incoming, bytes, static_cast<int>(received)) > 0;
    }

    // Sends close_notify if that needs no waiting.
    void sayGoodbye() noexcept {
        if (!m_isOpen)
            return;
        try {
            ::SSL_shutdown(m_ssl.get());
            const Deadline now("close", std::chrono::milliseconds(0));
            flush(&now);
        } catch (const Exception&) {
        } catch (const std::bad_alloc&) {
        }
        ::ERR_clear_error();
    }

    void check(bool isDone) {
        if (!isDone)
            throwFailed("handshake with");
    }

    [[noreturn]] void throwFailed(const char* what) {
        m_isOpen = false; // nothing may follow an error
        const bool isEnd = m_rejection.empty() && ::ERR_peek_error() == 0;
        const std::string reason = isEnd                 ? "the peer closed the connection"
                                   : m_rejection.empty() ? oldestTlsError()
                                                         : m_rejection;
        OW_THROW(SSLException, (std::string("TLS ") + what + " " + m_host + " failed: " + reason).c_str());
    }

    const std::unique_ptr<Socket> m_plain;
    const std::string m_host;
    const TlsContext m_context;
    const std::unique_ptr<SSL, Deleter> m_ssl;
    BIO* m_incoming = nullptr; // encrypted bytes from the peer
    BIO* m_outgoing = nullptr; // encrypted bytes to the peer
    std::string m_rejection;   // of the server's certificate
    bool m_isOpen = false;
};

} // namespace

void requireTls() {}

std::unique_ptr<Stream> startTls(std::unique_ptr<Socket> plain, const Endpoint& endpoint,
                                 const Deadline& deadline) {
    const TlsSettings settings = tlsSettings();
    if (!settings.verifiesServer)
        trace(__FILE__, __func__, __LINE__,
              "WARNING: certificate of " + endpoint.host + " is not verified, OWB_TLS_VERIFY is 0");
    return std::make_unique<TlsSocket>(std::move(plain), endpoint, settings, deadline);
}

} // namespace OpenWBEM
