// Requests over TLS to a server with a self-signed certificate.
#include "Clients.hpp"

#include <csignal>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <thread>

namespace {

// A listener on a loopback port.
class Listener {
public:
    Listener()
        : m_number(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof m_address;
        auto* const address = reinterpret_cast<sockaddr*>(&m_address);
        EXPECT_EQ(0, ::bind(m_number, address, size));
        EXPECT_EQ(0, ::listen(m_number, 8));
        ::getsockname(m_number, address, &size);
    }
    ~Listener() { ::close(m_number); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    int number() const { return m_number; }
    std::string url(const std::string& host) const {
        return "owbinary.wbems://" + host + ":" + std::to_string(ntohs(m_address.sin_port));
    }

private:
    const int m_number;
    sockaddr_in m_address{};
};

// Serves one connection after another over TLS. Each read counts as a request and gets the same reply. Closes
// the connection if the reply announces it.
class TlsPeer {
public:
    TlsPeer(std::string reply, int highestVersion = 0)
        : m_reply(std::move(reply))
        , m_context(::SSL_CTX_new(::TLS_server_method())) {
        certify();
        ::SSL_CTX_set_security_level(m_context, 0); // the client must reject old versions
        ::SSL_CTX_set_min_proto_version(m_context, 0);
        ::SSL_CTX_set_max_proto_version(m_context, highestVersion);
        m_thread = std::thread([this] { run(); });
    }
    ~TlsPeer() {
        ::shutdown(m_listener.number(), SHUT_RDWR); // ends accept()
        m_thread.join();
        ::SSL_CTX_free(m_context);
    }
    TlsPeer(const TlsPeer&) = delete;
    TlsPeer& operator=(const TlsPeer&) = delete;

    std::string url(const std::string& host) const { return m_listener.url(host); }

    // Of the last connection. Valid after a reply.
    std::string request;
    std::string serverName;
    std::string version;
    unsigned connections = 0;
    bool saysGoodbye = true;

private:
    void certify() {
        EVP_PKEY* const key = ::EVP_EC_gen("P-256");
        X509* const certificate = ::X509_new();
        ::X509_gmtime_adj(X509_getm_notBefore(certificate), 0);
        ::X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
        ::X509_set_pubkey(certificate, key);
        ::X509_sign(certificate, key, ::EVP_sha256());
        EXPECT_EQ(1, ::SSL_CTX_use_certificate(m_context, certificate));
        EXPECT_EQ(1, ::SSL_CTX_use_PrivateKey(m_context, key));
        ::X509_free(certificate);
        ::EVP_PKEY_free(key);
    }

    void run() {
        sigset_t pipe; // raised if the client has closed the connection
        ::sigemptyset(&pipe);
        ::sigaddset(&pipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
        for (int connection = ::accept(m_listener.number(), nullptr, nullptr); connection >= 0;
             connection = ::accept(m_listener.number(), nullptr, nullptr)) {
            SSL* const ssl = ::SSL_new(m_context);
            ::SSL_set_fd(ssl, connection);
            if (::SSL_accept(ssl) == 1)
                serve(ssl);
            ::SSL_free(ssl);
            ::close(connection);
            ::ERR_clear_error();
        }
    }

    void serve(SSL* ssl) {
        ++connections;
        const char* const name = ::SSL_get_servername(ssl, TLSEXT_NAMETYPE_host_name);
        serverName = name ? name : "";
        version = ::SSL_get_version(ssl);
        std::string bytes(1 << 20, '\0');
        for (int n = ::SSL_read(ssl, bytes.data(), 1 << 20); n > 0;
             n = ::SSL_read(ssl, bytes.data(), 1 << 20)) {
            request = bytes.substr(0, static_cast<std::size_t>(n));
            ::SSL_write(ssl, m_reply.data(), static_cast<int>(m_reply.size()));
            if (m_reply.find("close") != std::string::npos)
                break;
        }
        if (saysGoodbye)
            ::SSL_shutdown(ssl);
    }

    const std::string m_reply;
    SSL_CTX* const m_context;
    const Listener m_listener;
    std::thread m_thread;
};

// Sends some bytes to each client, and closes.
class GreetingPeer {
public:
    explicit GreetingPeer(std::string greeting)
        : m_thread([this, text = std::move(greeting)] {
            const int connection = ::accept(m_listener.number(), nullptr, nullptr);
            ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
            ::shutdown(connection, SHUT_WR);
            char ignored[1024];
            while (::recv(connection, ignored, sizeof ignored, 0) > 0) {
            }
            ::close(connection);
        }) {}
    ~GreetingPeer() { m_thread.join(); }
    GreetingPeer(const GreetingPeer&) = delete;
    GreetingPeer& operator=(const GreetingPeer&) = delete;

    std::string url() const { return m_listener.url("localhost"); }

private:
    const Listener m_listener;
    std::thread m_thread;
};

// A reply of many TLS records and many instances.
std::string longReply() {
    return wire::chunkedReply(wire::enumeration(std::vector<std::string>(20000, wire::instance("Foo", {}))));
}

TEST(Tls, CarriesRequestsAndRepliesOverAKeptConnection) {
    TlsPeer peer(longReply());
    CIMClient client(peer.url("localhost").c_str(), "root/cimv2");
    EXPECT_EQ(20000U, read(client));
    EXPECT_EQ(20000U, read(client));
    EXPECT_EQ(1U, peer.connections);
    EXPECT_EQ(0U, peer.request.find("M-POST /cimom HTTP/1.1\r\n"));
}

TEST(Tls, SendsTheNameOfTheServerButNotAnAddress) {
    const std::pair<const char*, const char*> hosts[] = {{"localhost", "localhost"}, {"127.0.0.1", ""}};
    for (const auto& [host, name] : hosts) {
        TlsPeer peer(good);
        CIMClient client(peer.url(host).c_str(), "root/cimv2");
        EXPECT_EQ(1U, read(client));
        EXPECT_EQ(name, peer.serverName);
    }
}

TEST(Tls, RequiresVersion12) {
    for (const auto& [highest, name] : {std::pair(TLS1_2_VERSION, "TLSv1.2"), std::pair(0, "TLSv1.3")}) {
        TlsPeer peer(good, highest);
        CIMClient client(peer.url("localhost").c_str(), "root/cimv2");
        EXPECT_EQ(1U, read(client));
        EXPECT_EQ(name, peer.version);
    }
    TlsPeer old(good, TLS1_1_VERSION);
    CIMClient client(old.url("localhost").c_str(), "root/cimv2");
    EXPECT_EQ("SSLException: TLS handshake failed: ", messageOfReading(client).substr(0, 36));
}

TEST(Tls, ReconnectsIfTheServerHasClosedTheConnection) {
    for (const bool saysGoodbye : {true, false}) {
        TlsPeer peer(wire::plainReply(wire::enumeration({wire::instance("close", {})})));
        peer.saysGoodbye = saysGoodbye;
        CIMClient client(peer.url("localhost").c_str(), "root/cimv2");
        EXPECT_EQ(1U, read(client));
        EXPECT_EQ(1U, read(client));
    }
}

TEST(Tls, WithAPeerWithoutTlsIsAnSslException) {
    for (const char* greeting : {"220 mail.example.org ESMTP\r\n", ""}) {
        GreetingPeer peer(greeting);
        CIMClient client(peer.url().c_str(), "root/cimv2");
        EXPECT_EQ("SSLException: TLS handshake failed: ", messageOfReading(client).substr(0, 36));
    }
}

TEST(Tls, HandshakeIsLimitedByTheConnectTimeout) {
    BusyListener listener(AF_INET);
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        clientTimeouts().connect = std::chrono::milliseconds(100);
        const std::string url = listener.url();
        CIMClient client(("owbinary.wbems" + url.substr(url.find("://"))).c_str(), "root/cimv2");
        EXPECT_EQ("SocketException: Client connect timeout (0 seconds) expired.", messageOfReading(client));
    });
}

} // namespace
