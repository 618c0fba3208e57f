#ifndef TESTS_CIMOM_TLS_CONNECTION_HPP
#define TESTS_CIMOM_TLS_CONNECTION_HPP
#include "Client.hpp"
#include "support/TlsClient.hpp"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <thread>

/** A client of an object manager with TLS, on a connection of its own. */
class TlsConnection {
public:
    explicit TlsConnection(std::uint16_t port, int version = TLS1_3_VERSION, std::size_t extensionSize = 0)
        : socket(port)
        , tls(version, extensionSize) {
        const int yes = 1;
        ::setsockopt(socket.descriptor(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    }

    /** Shakes hands, with each flight in pieces of a size. */
    void connect(std::size_t pieceSize = 65536) {
        sendPieces(tls.bytesToSend(), pieceSize);
        receiveUntil([&] {
            if (!tls.isConnected())
                sendPieces(tls.bytesToSend(), pieceSize);
            return tls.isConnected() || !tls.failure().empty();
        });
        sendPieces(tls.bytesToSend(), pieceSize);
    }
    /** Shakes hands except for the last flight, which it returns. */
    std::string lastFlight() {
        socket.send(tls.bytesToSend());
        std::string flight;
        receiveUntil([&] { return !(flight += tls.bytesToSend()).empty() || !tls.failure().empty(); });
        return flight;
    }
    /** The first line of the reply to a request; "" if there is none. */
    std::string statusLine(const std::string& request = httpRequest(enumerateBody("QAV_System"))) {
        socket.send(tls.encrypted(request));
        std::string reply;
        receiveUntil([&] { return (reply += tls.received()).find("\r\n") != std::string::npos; });
        return reply.substr(0, reply.find("\r\n"));
    }
    /** Closes this direction without close_notify. */
    void shutDown() { ::shutdown(socket.descriptor(), SHUT_WR); }
    /** Passes what arrives to `tls` until `isDone()` or the end of the connection. */
    template <class Condition>
    void receiveUntil(Condition isDone) {
        char bytes[16384];
        while (!isDone()) {
            const ssize_t size = ::recv(socket.descriptor(), bytes, sizeof bytes, 0);
            if (size <= 0)
                return;
            tls.take(std::string_view(bytes, static_cast<std::size_t>(size)));
        }
    }

    const Client socket;
    support::TlsClient tls;

private:
    /** Between two pieces the object manager has time to read. */
    void sendPieces(std::string_view bytes, std::size_t size) const {
        for (; !bytes.empty(); bytes.remove_prefix(std::min(size, bytes.size()))) {
            socket.send(bytes.substr(0, size));
            if (size < bytes.size())
                std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
    }
};

#endif
