#include "support/Relay.hpp"

#include <csignal>
#include <future>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace support {
namespace {

sockaddr_in loopback(unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

int listenOnLoopback() {
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(0);
    if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener, 8) != 0)
        throw std::runtime_error("cannot listen");
    return listener;
}

void sendAtOnce(int socket) { // small pieces must not wait for acknowledgements
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

int connectTo(unsigned short port) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return socket;
}

} // namespace

Relay::Relay(unsigned short serverPort, Pump pump)
    : m_listener(listenOnLoopback())
    , m_serverPort(serverPort)
    , m_pump(std::move(pump)) {
    // As in ScriptedPeer: a test may fork.
    std::promise<void> started;
    const std::future<void> isRunning = started.get_future();
    m_thread = std::thread([this, promise = std::move(started)]() mutable {
        promise.set_value();
        run();
    });
    isRunning.wait();
}

Relay::~Relay() {
    ::shutdown(m_listener, SHUT_RDWR); // ends accept()
    m_thread.join();
    ::close(m_listener);
}

std::string Relay::url(const std::string& scheme, const std::string& host) const {
    return scheme + "://" + host + ":" + std::to_string(port());
}

unsigned short Relay::port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void Relay::run() {
    sigset_t pipe; // raised if a peer has closed its connection
    ::sigemptyset(&pipe);
    ::sigaddset(&pipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    for (int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC); client >= 0;
         client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC)) {
        const int server = connectTo(m_serverPort);
        sendAtOnce(client);
        sendAtOnce(server);
        m_pump(client, server);
        ::close(client);
        ::close(server);
    }
}

Readable awaitEither(int first, int second) {
    pollfd waiting[] = {{first, POLLIN, 0}, {second, POLLIN, 0}};
    while (::poll(waiting, 2, -1) < 0) {
    }
    return {waiting[0].revents != 0, waiting[1].revents != 0};
}

void awaitEnd(int socket) {
    pollfd waiting{socket, POLLRDHUP, 0};
    while (::poll(&waiting, 1, -1) < 0) {
    }
}

void resetWhenClosed(int socket) {
    const linger now = {1, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

} // namespace support
