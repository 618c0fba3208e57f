#include "client/TlsEngine.hpp"
#include "tls/TlsContext.hpp"
#include "tls/TlsFailure.hpp"
#include "tls/TlsServer.hpp"

#include <algorithm>
#include <memory>
#include <new>
#include <openssl/err.h>
#include <openssl/x509v3.h>
#include <utility>

namespace owtls {
namespace {

const std::size_t pieceSize = 16 * 1024; // maximum size of a TLS record

struct Deleter {
    void operator()(SSL* ssl) const { ::SSL_free(ssl); }
    void operator()(X509* certificate) const { ::X509_free(certificate); }
};
using Certificate = std::unique_ptr<X509, Deleter>;

class OpenSslEngine : public TlsEngine {
public:
    explicit OpenSslEngine(TlsContext context)
        : m_context(std::move(context)) {}

    /** Makes the connection. False if that fails. */
    bool open(const std::string& host, bool hostIsAddress, bool verifies) {
        m_ssl.reset(::SSL_new(m_context.get()));
        if (!m_ssl)
            return false;
        m_incoming = ::BIO_new(::BIO_s_mem());
        m_outgoing = ::BIO_new(::BIO_s_mem());
        ::SSL_set_bio(m_ssl.get(), m_incoming, m_outgoing); // takes ownership of both
        return m_incoming && m_outgoing &&
               (hostIsAddress || SSL_set_tlsext_host_name(m_ssl.get(), host.c_str()) == 1) &&
               (!verifies || verifyServer(host, hostIsAddress));
    }

    Outcome shakeHands() override {
        ::ERR_clear_error();
        return outcome(::SSL_connect(m_ssl.get()));
    }

    std::size_t encrypt(std::string_view bytes) override {
        std::size_t taken = 0;
        ::ERR_clear_error();
        ::SSL_write_ex(m_ssl.get(), bytes.data(), std::min(bytes.size(), pieceSize), &taken);
        return taken;
    }

    Outcome decrypt(char* to, std::size_t size, std::size_t& decrypted) override {
        ::ERR_clear_error();
        return outcome(::SSL_read_ex(m_ssl.get(), to, size, &decrypted));
    }

    void sayGoodbye() override {
        ::SSL_shutdown(m_ssl.get());
        ::ERR_clear_error();
    }

    bool receive(std::string_view bytes) override {
        return ::BIO_write(m_incoming, bytes.data(), static_cast<int>(bytes.size())) > 0;
    }

    std::string takeBytesToSend() override {
        char* bytes = nullptr;
        const long size = BIO_get_mem_data(m_outgoing, &bytes);
        std::string taken(bytes, static_cast<std::size_t>(std::max(size, 0L)));
        static_cast<void>(BIO_reset(m_outgoing));
        return taken;
    }

    bool isQuiet() const override {
        return ::SSL_pending(m_ssl.get()) == 0 && ::BIO_ctrl_pending(m_incoming) == 0;
    }

    std::string reason() override {
        if (!m_rejection.empty() || ::ERR_peek_error() == 0)
            return m_rejection;
        return oldestTlsError();
    }

    TlsServer server() const override {
        const Certificate accepted(::SSL_get_peer_certificate(m_ssl.get()));
        return describe(m_ssl.get(), accepted ? accepted.get() : m_rejected.get());
    }

private:
    Outcome outcome(int result) const {
        if (result == 1)
            return Outcome::done;
        switch (::SSL_get_error(m_ssl.get(), result)) {
        case SSL_ERROR_WANT_READ:
            return Outcome::needsBytes;
        case SSL_ERROR_SSL:
            return Outcome::failed;
        default:
            return Outcome::ended;
        }
    }

    bool verifyServer(const std::string& host, bool isAddress) {
        X509_VERIFY_PARAM* const rules = ::SSL_get0_param(m_ssl.get());
        ::X509_VERIFY_PARAM_set_hostflags(rules, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
        ::SSL_set_verify(m_ssl.get(), SSL_VERIFY_PEER, noteRejection);
        return (isAddress ? ::X509_VERIFY_PARAM_set1_ip_asc(rules, host.c_str())
                          : ::X509_VERIFY_PARAM_set1_host(rules, host.data(), host.size())) == 1 &&
               SSL_set_app_data(m_ssl.get(), this) == 1;
    }

    // OpenSSL forgets the certificate that it rejects.
    static int noteRejection(int isAccepted, X509_STORE_CTX* verification) noexcept {
        if (!isAccepted) {
            const void* const ssl =
                ::X509_STORE_CTX_get_ex_data(verification, ::SSL_get_ex_data_X509_STORE_CTX_idx());
            auto* const self = static_cast<OpenSslEngine*>(SSL_get_app_data(static_cast<const SSL*>(ssl)));
            X509* const rejected = ::X509_STORE_CTX_get0_cert(verification);
            ::X509_up_ref(rejected);
            self->m_rejected.reset(rejected);
            try {
                self->m_rejection = rejectionOf(verification);
            } catch (const std::bad_alloc&) { // the handshake fails with the reason of OpenSSL
            }
        }
        return isAccepted;
    }

    const TlsContext m_context;
    std::unique_ptr<SSL, Deleter> m_ssl;
    BIO* m_incoming = nullptr; // encrypted bytes from the peer
    BIO* m_outgoing = nullptr; // encrypted bytes to the peer
    std::string m_rejection;   // of the server's certificate
    Certificate m_rejected;
};

} // namespace
} // namespace owtls

__attribute__((visibility("default"))) owtls::TlsEngine* owtls_engine(const std::string& host,
                                                                      bool hostIsAddress,
                                                                      const owtls::TlsSettings& settings,
                                                                      std::string& failure) {
    owtls::TlsContext context = owtls::makeTlsContext(settings, failure);
    if (!context)
        return nullptr;
    auto engine = std::make_unique<owtls::OpenSslEngine>(std::move(context));
    const bool isOpen = engine->open(host, hostIsAddress, settings.verifiesServer);
    return owtls::note(isOpen, "TLS handshake with " + host + " failed", failure) ? engine.release()
                                                                                  : nullptr;
}
