#include "client/TlsSocket.hpp"

#include "OW_SSLException.hpp"
#include "client/TlsModule.hpp"
#include "client/Trace.hpp"

#include <new>
#include <string>
#include <utility>

namespace OpenWBEM {

using owtls::TlsEngine;
using owtls::TlsSettings;

namespace {

using Outcome = TlsEngine::Outcome;

std::unique_ptr<TlsEngine> engineFor(const Endpoint& endpoint, const TlsSettings& settings) {
    std::string failure;
    std::unique_ptr<TlsEngine> engine(tlsModule()(endpoint.host, endpoint.hostIsAddress, settings, failure));
    if (!engine)
        OW_THROW(SSLException, failure.c_str());
    return engine;
}

// Carries bytes between the engine and the socket.
class TlsSocket : public Stream {
public:
    TlsSocket(std::unique_ptr<Socket> plain, const Endpoint& endpoint, const TlsSettings& settings,
              const Deadline& deadline)
        : m_plain(std::move(plain))
        , m_host(endpoint.host)
        , m_engine(engineFor(endpoint, settings)) {
        shakeHands(deadline);
    }

    ~TlsSocket() override { sayGoodbye(); }

    bool send(std::string_view bytes) override {
        while (!bytes.empty()) {
            const std::size_t taken = m_engine->encrypt(bytes);
            if (taken == 0 || !flush(nullptr))
                return false;
            bytes.remove_prefix(taken);
        }
        return true;
    }

    std::size_t receive(char* to, std::size_t size, const Deadline& deadline) override {
        while (true) {
            std::size_t received = 0;
            const Outcome outcome = m_engine->decrypt(to, size, received);
            if (outcome == Outcome::done)
                return received;
            flush(&deadline);
            if (outcome == Outcome::failed)
                throwFailed("connection to");
            if (outcome != Outcome::needsBytes || !fetch(deadline))
                return 0;
        }
    }

    bool isQuiet() override { return m_engine->isQuiet() && m_plain->isQuiet(); }

private:
    void shakeHands(const Deadline& deadline) {
        while (true) {
            const Outcome outcome = m_engine->shakeHands();
            if (outcome == Outcome::done)
                break;
            flush(&deadline);
            if (outcome != Outcome::needsBytes || !fetch(deadline))
                throwFailed("handshake with");
        }
        m_isOpen = flush(&deadline);
    }

    // Sends what the engine has made. Without a deadline, each wait has its own. False if the peer has closed
    // the connection.
    bool flush(const Deadline* deadline) {
        const std::string bytes = m_engine->takeBytesToSend();
        return deadline ? m_plain->send(bytes, *deadline) : m_plain->send(bytes);
    }

    bool fetch(const Deadline& deadline) {
        char bytes[16 * 1024]; // maximum size of a TLS record
        const std::size_t received = m_plain->receive(bytes, sizeof bytes, deadline);
        return received > 0 && m_engine->receive(std::string_view(bytes, received));
    }

    // Sends close_notify if that needs no waiting.
    void sayGoodbye() noexcept {
        if (!m_isOpen)
            return;
        try {
            m_engine->sayGoodbye();
            const Deadline now("close", std::chrono::milliseconds(0));
            flush(&now);
        } catch (const Exception&) {
        } catch (const std::bad_alloc&) {
        }
    }

    [[noreturn]] void throwFailed(const char* what) {
        m_isOpen = false; // nothing may follow an error
        const std::string reason = m_engine->reason();
        OW_THROW(SSLException, (std::string("TLS ") + what + " " + m_host +
                                " failed: " + (reason.empty() ? "the peer closed the connection" : reason))
                                   .c_str());
    }

    const std::unique_ptr<Socket> m_plain;
    const std::string m_host;
    const std::unique_ptr<TlsEngine> m_engine;
    bool m_isOpen = false;
};

} // namespace

void requireTls() {
    tlsModule();
}

std::unique_ptr<Stream> startTls(std::unique_ptr<Socket> plain, const Endpoint& endpoint,
                                 const Deadline& deadline) {
    const TlsSettings settings = owtls::tlsSettings();
    if (!settings.verifiesServer)
        trace(__FILE__, __func__, __LINE__,
              "WARNING: certificate of " + endpoint.host + " is not verified, OWB_TLS_VERIFY is 0");
    return std::make_unique<TlsSocket>(std::move(plain), endpoint, settings, deadline);
}

} // namespace OpenWBEM
