#ifndef TESTS_SUPPORT_HTTP_CLIENT_HPP
#define TESTS_SUPPORT_HTTP_CLIENT_HPP
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/socket.h>

namespace support {

/** A reply as received, and its parts. */
struct HttpReply {
    /** All bytes. */
    std::string bytes;
    unsigned status = 0;
    std::string reason;
    /** Without the chunk framing. */
    std::string body;

    bool hasLine(const std::string& line) const {
        return bytes.find("\r\n" + line + "\r\n") != std::string::npos;
    }
};

/** A client of an HTTP server. Each wait for the server times out after some seconds with an exception. */
class HttpClient {
public:
    /** Connects to a Unix-domain socket. */
    explicit HttpClient(const std::string& socketPath);
    /** Connects to a port of the loopback address: AF_INET or AF_INET6. */
    explicit HttpClient(std::uint16_t port, int family = AF_INET);
    /** Owns a connected socket. */
    explicit HttpClient(int descriptor);
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    void send(std::string_view bytes) const;
    /** Reads one whole reply; throws std::runtime_error if the connection ends before its end. */
    HttpReply receive();
    HttpReply exchange(std::string_view request) {
        send(request);
        return receive();
    }
    /** Waits for the end of the connection; false if more bytes arrive. */
    bool isClosedByPeer();
    int descriptor() const { return m_descriptor; }

private:
    bool receiveMore();

    int m_descriptor;
    std::string m_unread;
};

} // namespace support
#endif
