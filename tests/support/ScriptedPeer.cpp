#include "support/ScriptedPeer.hpp"

#include <algorithm>
#include <cstring>
#include <future>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace support {
namespace {

template <class Address>
int listenOn(const Address& address) {
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    const int listener = ::socket(generic->sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(listener, generic, sizeof address) != 0 || ::listen(listener, 8) != 0)
        throw std::runtime_error(std::string("cannot listen: ") + std::strerror(errno));
    return listener;
}

int listenOn(Listening listening, const std::string& path) {
    if (listening == Listening::unixDomain) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        return listenOn(address);
    }
    if (listening == Listening::ipv4) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return listenOn(address);
    }
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_addr = in6addr_loopback;
    return listenOn(address);
}

// Length of the first request in the bytes; 0 if it is incomplete.
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

// Whether the client has not read everything that was sent to it on a Unix-domain socket.
bool isUnread(int connection) {
    int left = 0;
    return ::ioctl(connection, SIOCOUTQ, &left) == 0 && left > 0;
}

void makeCloseReset(int connection) {
    const linger now = {1, 0};
    ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

std::string escaped(const std::string& path) {
    std::string text;
    for (const char c : path)
        text += c == '/' ? std::string("%2f") : std::string(1, c);
    return text;
}

} // namespace

std::string urlOf(const std::string& socketPath) {
    return "owbinary.wbem://localhost:" + escaped(socketPath);
}

ScriptedPeer::ScriptedPeer(std::vector<Step> steps, Listening listening)
    : m_steps(std::move(steps))
    , m_listening(listening)
    , m_listener(listenOn(listening, socketPath())) {
    if (::pipe(m_stop) != 0)
        throw std::runtime_error("pipe failed");
    // Tests fork. A thread that is still starting may hold a lock of the C library, which then stays locked
    // in the child. So wait until the thread runs.
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
    return url("owbinary.wbem", m_listening == Listening::ipv6 ? "[::1]" : "localhost");
}

std::string ScriptedPeer::url(const std::string& scheme, const std::string& host) const {
    const bool isTcp = m_listening != Listening::unixDomain;
    return scheme + "://" + host + ":" + (isTcp ? std::to_string(port()) : escaped(socketPath()));
}

unsigned short ScriptedPeer::port() const {
    sockaddr_in6 address{}; // has its port at the same offset as sockaddr_in
    socklen_t size = sizeof address;
    ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
    return m_listening == Listening::unixDomain ? 0 : ntohs(address.sin6_port);
}

std::vector<std::string> ScriptedPeer::requests() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_requests;
}

unsigned ScriptedPeer::connections() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_connections;
}

void ScriptedPeer::awaitEnds(unsigned count) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_hasEnded.wait(lock, [this, count] { return m_ended >= count; });
}

// Returns false if the peer must stop.
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
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_ended;
        m_hasEnded.notify_all();
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
        if (!carryOut(step, connection))
            return;
    }
}

// Returns false if the connection must be closed.
bool ScriptedPeer::carryOut(const Step& step, int connection) const {
    bool isListening = send(connection, step.reply, step.endless.empty() ? step.pace : Step::Pace::atOnce);
    while (isListening && !step.endless.empty())
        isListening = send(connection, step.endless, step.pace);
    if (step.then == Step::Then::reset)
        makeCloseReset(connection);
    return isListening && step.then == Step::Then::keepOpen;
}

// Returns false if the client has disconnected, which is allowed, or if the peer must stop.
bool ScriptedPeer::send(int connection, const std::string& bytes, Step::Pace pace) const {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const std::size_t size = pace == Step::Pace::atOnce ? bytes.size() - sent : 1;
        const ssize_t n = ::send(connection, bytes.data() + sent, size, MSG_NOSIGNAL);
        if (n <= 0 || (pace == Step::Pace::drop && isStopped(2)))
            return false;
        sent += static_cast<std::size_t>(n);
        while (pace == Step::Pace::byteByByte && isUnread(connection))
            if (isStopped(0))
                return false;
    }
    return true;
}

bool ScriptedPeer::isStopped(int milliseconds) const {
    pollfd stop = {m_stop[0], POLLIN, 0};
    return ::poll(&stop, 1, milliseconds) > 0;
}

} // namespace support
