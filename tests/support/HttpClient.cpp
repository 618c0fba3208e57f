#include "support/HttpClient.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace support {

namespace beast_http = boost::beast::http;

namespace {

[[noreturn]] void fail(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

int connectTo(const std::string& path) {
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return descriptor;
    ::close(descriptor);
    fail("connect");
}

int connectTo(std::uint16_t port, int family) {
    const int descriptor = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in ipv4{};
    ipv4.sin_family = AF_INET;
    ipv4.sin_port = htons(port);
    ipv4.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    sockaddr_in6 ipv6{};
    ipv6.sin6_family = AF_INET6;
    ipv6.sin6_port = htons(port);
    ipv6.sin6_addr = in6addr_loopback;
    const int result = family == AF_INET
                           ? ::connect(descriptor, reinterpret_cast<const sockaddr*>(&ipv4), sizeof ipv4)
                           : ::connect(descriptor, reinterpret_cast<const sockaddr*>(&ipv6), sizeof ipv6);
    if (result == 0)
        return descriptor;
    ::close(descriptor);
    fail("connect");
}

} // namespace

HttpClient::HttpClient(const std::string& socketPath)
    : HttpClient(connectTo(socketPath)) {}

HttpClient::HttpClient(std::uint16_t port, int family)
    : HttpClient(connectTo(port, family)) {}

HttpClient::HttpClient(int descriptor)
    : m_descriptor(descriptor) {
    const timeval longest = {20, 0};
    ::setsockopt(m_descriptor, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
    ::setsockopt(m_descriptor, SOL_SOCKET, SO_SNDTIMEO, &longest, sizeof longest);
}

HttpClient::~HttpClient() {
    ::close(m_descriptor);
}

void HttpClient::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t size = ::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (size < 0)
            fail("send");
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
}

HttpReply HttpClient::receive() {
    beast_http::response_parser<beast_http::string_body> parser;
    parser.eager(true);
    parser.body_limit(boost::none);
    HttpReply reply;
    while (!parser.is_done()) {
        boost::system::error_code error = beast_http::error::need_more;
        if (!m_unread.empty()) {
            const std::size_t used = parser.put(boost::asio::buffer(m_unread), error);
            reply.bytes += m_unread.substr(0, used);
            m_unread.erase(0, used);
        }
        if (error && error != beast_http::error::need_more)
            throw std::runtime_error("not a reply: " + error.message());
        if (!parser.is_done() && error && !receiveMore())
            throw std::runtime_error("the connection ended before a whole reply");
    }
    reply.status = parser.get().result_int();
    reply.reason = std::string(parser.get().reason());
    reply.body = parser.get().body();
    return reply;
}

bool HttpClient::isClosedByPeer() {
    return m_unread.empty() && !receiveMore();
}

bool HttpClient::receiveMore() {
    char buffer[65536];
    const ssize_t size = ::recv(m_descriptor, buffer, sizeof buffer, 0);
    // A peer that closes without having read everything resets the connection.
    if (size < 0 && errno != ECONNRESET)
        fail("recv");
    m_unread.append(buffer, size > 0 ? static_cast<std::size_t>(size) : 0);
    return size > 0;
}

} // namespace support
