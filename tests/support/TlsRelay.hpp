#ifndef TESTS_SUPPORT_TLS_RELAY_HPP
#define TESTS_SUPPORT_TLS_RELAY_HPP
#include "support/Relay.hpp"

#include <functional>
#include <memory>
#include <mutex>
#include <openssl/ssl.h>
#include <string>

namespace support {

/** How a relay uses TLS. */
struct TlsRelayOptions {
    /** File of its certificate and private key, see certificate(). */
    std::string certificate = "localhost.pem";
    /** Such as TLS1_2_VERSION; 0 means the highest one. */
    int highestVersion = 0;
    bool demandsCertificate = false;
    /** Whether it sends close_notify at the end. */
    bool saysGoodbye = true;
    /** Whether it reads nothing after the handshake. */
    bool isDeaf = false;
    /** Runs before each part of a reply. */
    std::function<void(SSL*)> beforeReply = {};
};

/** Makes a TLS server of a server without TLS on a loopback port, such as ScriptedPeer. */
class TlsRelay {
public:
    /** What the relay has seen of the last connection. */
    struct Seen {
        std::string serverName;
        std::string version;
        /** Common name of the client's certificate. */
        std::string client;
        bool goodbye = false;
    };

    explicit TlsRelay(unsigned short serverPort, TlsRelayOptions options = {});

    std::string url(const std::string& scheme = "owbinary.wbems",
                    const std::string& host = "localhost") const {
        return m_relay->url(scheme, host);
    }
    unsigned short port() const { return m_relay->port(); }
    Seen seen() const;

private:
    void pump(int client, int server);
    void carry(SSL* ssl, int client, int server);
    void note(SSL* ssl);

    const TlsRelayOptions m_options;
    const std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> m_context;
    mutable std::mutex m_mutex;
    Seen m_seen;
    std::unique_ptr<Relay> m_relay; // destroyed first: its thread uses the others
};

} // namespace support
#endif
