#include "support/ScriptedPeer.hpp"

#include <algorithm>
#include <cstring>
#include <future>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace support {
namespace {

int listenOn(const std::string& path) {
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener, 8) != 0)
        throw std::runtime_error("cannot listen on " + path + ": " + std::strerror(errno));
    return listener;
}

// Length of the first whole request in the bytes, 0 when there is none yet.
std::size_t requestLength(const std::string& bytes) {
    const std::size_t headEnd = bytes.find("\r\n\r\n");
    if (headEnd == std::string::npos)
        return 0;
    const std::string name = "Content-Length: ";
    const std::size_t at = bytes.find(name);
    const std::size_t body = at < headEnd ? std::stoul(bytes.substr(at + name.size())) : 0;
    const std::size_t length = headEnd + 4 + body;
    return bytes.size() >= length ? length : 0;
}

// False when the client has gone; that is its right.
bool sendAll(int connection, const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t n = ::send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        sent += static_cast<std::size_t>(n);
    }
    return true;
}

} // namespace

std::string urlOf(const std::string& socketPath) {
    std::string url = "owbinary.wbem://localhost:";
    for (const char c : socketPath)
        url += c == '/' ? std::string("%2f") : std::string(1, c);
    return url;
}

ScriptedPeer::ScriptedPeer(std::vector<Step> steps)
    : m_steps(std::move(steps))
    , m_listener(listenOn(socketPath())) {
    if (::pipe(m_stop) != 0)
        throw std::runtime_error("pipe failed");
    // Tests fork. A thread that is still starting may hold a lock of the C library, which then nobody frees
    // in the child.
    std::promise<void> started;
    const std::future<void> isRunning = started.get_future();
    m_thread = std::thread([this, promise = std::move(started)]() mutable {
        promise.set_value();
        run();
    });
    isRunning.wait();
}

ScriptedPeer::~ScriptedPeer() {
    ::close(m_stop[1]);
    m_thread.join();
    ::close(m_stop[0]);
    ::close(m_listener);
}

std::string ScriptedPeer::url() const {
    return urlOf(socketPath());
}

std::vector<std::string> ScriptedPeer::requests() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_requests;
}

unsigned ScriptedPeer::connections() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_connections;
}

// False when the peer is to stop.
bool ScriptedPeer::waitReadable(int descriptor) const {
    pollfd waiting[] = {{descriptor, POLLIN, 0}, {m_stop[0], POLLIN, 0}};
    while (::poll(waiting, 2, -1) < 0) {
    }
    return waiting[1].revents == 0;
}

void ScriptedPeer::run() {
    while (waitReadable(m_listener)) {
        const int connection = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0)
            continue;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            ++m_connections;
        }
        serve(connection);
        ::close(connection);
    }
}

void ScriptedPeer::serve(int connection) {
    std::string bytes;
    while (waitReadable(connection)) {
        char buffer[4096];
        const ssize_t n = ::recv(connection, buffer, sizeof buffer, 0);
        if (n <= 0)
            return;
        bytes.append(buffer, static_cast<std::size_t>(n));
        const std::size_t length = requestLength(bytes);
        if (length == 0)
            continue;
        Step step;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            step = m_steps.at(std::min(m_requests.size(), m_steps.size() - 1));
            m_requests.push_back(bytes.substr(0, length));
        }
        bytes.erase(0, length);
        if (!sendAll(connection, step.reply) || step.then == Step::Then::close)
            return;
    }
}

} // namespace support
