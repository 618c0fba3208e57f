#include "doctor/Connection.hpp"

#include "agent/Endpoint.hpp"
#include "doctor/TlsLibrary.hpp"

#include <OW_String.hpp>
#include <OW_URL.hpp>

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <netdb.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

namespace owbctl {
namespace {

using Outcome = owtls::TlsEngine::Outcome;

/** Seconds for each step. */
constexpr time_t stepTimeout = 10;

/** Connects a new socket, with a limit for each later step; owns nothing if that fails. */
util::Descriptor connectedTo(const sockaddr* address, socklen_t size) {
    util::Descriptor descriptor(::socket(address->sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const timeval time{stepTimeout, 0};
    ::setsockopt(descriptor.number(), SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
    ::setsockopt(descriptor.number(), SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
    const bool isConnected = ::connect(descriptor.number(), address, size) == 0;
    return util::Descriptor(isConnected ? descriptor.release() : -1);
}

util::Descriptor connectedToPath(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return connectedTo(reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

bool isBracketed(const std::string& host) {
    return host.size() > 2 && host.front() == '[' && host.back() == ']';
}

std::string withoutBrackets(const std::string& host) {
    return isBracketed(host) ? host.substr(1, host.size() - 2) : host;
}

/** A socket that is connected to a host; owns nothing if no address of the host accepts. */
util::Descriptor connectedToHost(const std::string& host, const std::string& port) {
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(withoutBrackets(host).c_str(), port.c_str(), &wanted, &found) != 0)
        return util::Descriptor(-1);
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
    for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
        util::Descriptor descriptor = connectedTo(each->ai_addr, each->ai_addrlen);
        if (descriptor.isOpen())
            return util::Descriptor(descriptor.release());
    }
    return util::Descriptor(-1);
}

util::Descriptor connectedTo(const agent::Endpoint& endpoint) {
    return endpoint.socketPath.empty() ? connectedToHost(endpoint.host, endpoint.port)
                                       : connectedToPath(endpoint.socketPath);
}

bool isAddress(const std::string& host) {
    in_addr ignored{};
    return isBracketed(host) || ::inet_pton(AF_INET, host.c_str(), &ignored) == 1;
}

} // namespace

bool usesTls(const std::string& url) {
    return OpenWBEM::URL(OpenWBEM::String(url.c_str())).scheme.endsWith("s");
}

Connection::Connection(const std::string& url)
    : m_socket(connectedTo(agent::endpointOf(url))) {
    if (isConnected() && usesTls(url))
        startTls(agent::endpointOf(url).host);
}

Connection::~Connection() {
    if (m_tls && m_failure.empty()) {
        m_tls->sayGoodbye();
        flush();
    }
}

owtls::TlsServer Connection::server() const {
    return m_tls ? m_tls->server() : owtls::TlsServer();
}

void Connection::startTls(const std::string& urlHost) {
    m_host = withoutBrackets(urlHost);
    if (isAddress(urlHost)) // a certificate has no zone
        m_host.resize(std::min(m_host.find('%'), m_host.size()));
    try {
        m_tls = tlsEngine(m_host, isAddress(urlHost));
        m_failure = m_tls ? "" : noTls;
    } catch (const std::runtime_error& e) {
        m_failure = e.what();
    }
    if (m_tls)
        shakeHands();
}

void Connection::shakeHands() {
    Outcome outcome = m_tls->shakeHands();
    while (outcome == Outcome::needsBytes && flush() && fetch())
        outcome = m_tls->shakeHands();
    flush();
    if (outcome != Outcome::done)
        fail("handshake with");
}

bool Connection::send(std::string_view bytes) {
    if (!isConnected() || !m_failure.empty())
        return false;
    if (!m_tls)
        return sendRaw(bytes);
    while (!bytes.empty()) {
        const std::size_t taken = m_tls->encrypt(bytes);
        if (taken == 0 || !flush())
            return false;
        bytes.remove_prefix(taken);
    }
    return true;
}

std::size_t Connection::receive(char* to, std::size_t size) {
    if (!isConnected() || !m_failure.empty())
        return 0;
    if (!m_tls)
        return static_cast<std::size_t>(std::max<ssize_t>(::recv(m_socket.number(), to, size, 0), 0));
    std::size_t received = 0;
    Outcome outcome = m_tls->decrypt(to, size, received);
    while (outcome == Outcome::needsBytes && flush() && fetch())
        outcome = m_tls->decrypt(to, size, received);
    if (outcome == Outcome::failed)
        fail("connection to");
    return outcome == Outcome::done ? received : 0;
}

bool Connection::sendRaw(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(m_socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

/** Sends what the engine has made. */
bool Connection::flush() {
    return sendRaw(m_tls->takeBytesToSend());
}

/** Passes the next bytes of the server to the engine. */
bool Connection::fetch() {
    char bytes[16 * 1024]; // maximum size of a TLS record
    const ssize_t size = ::recv(m_socket.number(), bytes, sizeof bytes, 0);
    m_isTimeout = size < 0 && errno == EAGAIN;
    return size > 0 && m_tls->receive(std::string_view(bytes, static_cast<std::size_t>(size)));
}

void Connection::fail(const char* what) {
    const std::string reason = m_tls->reason();
    m_failure = std::string("TLS ") + what + " " + m_host + " failed: " +
                (!reason.empty() ? reason
                 : m_isTimeout   ? "timed out after " + std::to_string(stepTimeout) + " s"
                                 : "the peer closed the connection");
}

} // namespace owbctl
