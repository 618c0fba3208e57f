#include "support/TamperingRelay.hpp"

#include <sys/socket.h>

namespace support {
namespace {

bool sendAll(int socket, const std::string& bytes) {
    return ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

} // namespace

TamperingRelay::TamperingRelay(unsigned short serverPort, std::size_t at, Then then)
    : m_at(at)
    , m_then(then)
    , m_relay(serverPort, [this](int client, int server) { pump(client, server); }) {}

void TamperingRelay::pump(int client, int server) {
    std::size_t passed = 0;
    const bool stops = m_then == Then::close || m_then == Then::stall;
    while (!stops || passed < m_at) {
        char bytes[16 * 1024];
        const Readable readable = awaitEither(client, server);
        const ssize_t n = ::recv(readable.first ? client : server, bytes, sizeof bytes, 0);
        if (n <= 0)
            return;
        std::string part(bytes, static_cast<std::size_t>(n));
        if (readable.first) {
            sendAll(server, part);
            continue;
        }
        const bool isThere = m_at >= passed && m_at - passed < part.size();
        const std::size_t at = m_at - passed;
        passed += part.size();
        m_passed += part.size();
        if (isThere && stops)
            part.resize(at);
        else if (isThere && m_then == Then::invert)
            part[at] = static_cast<char>(~part[at]);
        else if (isThere)
            part.insert(at, 1, 'x');
        if (!sendAll(client, part))
            return;
    }
    if (m_then == Then::stall)
        awaitEnd(client);
}

} // namespace support
