#ifndef OWBCTL_DOCTOR_CONNECTION_HPP
#define OWBCTL_DOCTOR_CONNECTION_HPP

#include "client/TlsEngine.hpp"
#include "util/Descriptor.hpp"

#include <memory>
#include <string>
#include <string_view>

namespace owbctl {

/** Whether a URL means TLS: its scheme ends in "s". */
bool usesTls(const std::string& url);

/**
 * A connection of the doctor's own to the object manager of a URL, with TLS if the URL says so. Each step has
 * a limit of 10 seconds. Not for the client library's own socket, which only the library knows.
 */
class Connection {
public:
    /** A failure: the connection needs the TLS of the client library, which is not ours or has none. */
    static constexpr const char* noTls = "the doctor has no TLS";

    /** Connects, and performs the handshake. */
    explicit Connection(const std::string& url);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /** Whether the object manager has accepted the connection, before any TLS. */
    bool isConnected() const { return m_socket.isOpen(); }
    /** Why TLS failed, in the words of the client library; empty if it did not, and without TLS. */
    const std::string& failure() const { return m_failure; }
    /** Describes the server of a connection with TLS, also if it was rejected. */
    owtls::TlsServer server() const;

    /** Sends bytes. Returns whether all are sent. */
    bool send(std::string_view bytes);
    /** Receives up to `size` bytes; 0 at the end of the connection and if it fails. */
    std::size_t receive(char* to, std::size_t size);

private:
    void startTls(const std::string& urlHost);
    void shakeHands();
    bool sendRaw(std::string_view bytes) const;
    bool flush();
    bool fetch();
    void fail(const char* what);

    util::Descriptor m_socket;
    std::string m_host;
    std::unique_ptr<owtls::TlsEngine> m_tls; // null without TLS
    std::string m_failure;
    bool m_isTimeout = false; // the last wait
};

} // namespace owbctl
#endif
