#include "Client.hpp"

#include "OW_IOException.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Protocol.hpp"
#include "support/Wire.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace http = boost::beast::http;
using support::wire::bigEndian;
using support::wire::text;

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

std::string flag(bool value) {
    return std::string("h") + (value ? '\1' : '\0');
}

std::string enumerateHead(const std::string& className, const std::string& nameSpace) {
    return bigEndian(3000008, 4) + '\x19' + 'j' + text(nameSpace) + 'j' + text(className) + flag(true) +
           flag(false) + flag(false) + flag(false);
}

} // namespace

Client::Client(const std::string& socketPath)
    : Client(connectTo(socketPath)) {}

Client::Client(std::uint16_t port, int family)
    : Client(connectTo(port, family)) {}

Client::Client(int descriptor)
    : m_descriptor(descriptor) {
    const timeval longest = {20, 0};
    ::setsockopt(m_descriptor, SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
    ::setsockopt(m_descriptor, SOL_SOCKET, SO_SNDTIMEO, &longest, sizeof longest);
}

Client::~Client() {
    ::close(m_descriptor);
}

void Client::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t size = ::send(m_descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (size < 0)
            fail("send");
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
}

Reply Client::receive() {
    http::response_parser<http::string_body> parser;
    parser.eager(true);
    parser.body_limit(boost::none);
    Reply reply;
    while (!parser.is_done()) {
        boost::system::error_code error = http::error::need_more;
        if (!m_unread.empty()) {
            const std::size_t used = parser.put(boost::asio::buffer(m_unread), error);
            reply.bytes += m_unread.substr(0, used);
            m_unread.erase(0, used);
        }
        if (error && error != http::error::need_more)
            throw std::runtime_error("not a reply: " + error.message());
        if (!parser.is_done() && error && !receiveMore())
            throw std::runtime_error("the connection ended before a whole reply");
    }
    reply.status = parser.get().result_int();
    reply.reason = std::string(parser.get().reason());
    reply.body = parser.get().body();
    return reply;
}

bool Client::isClosedByPeer() {
    return m_unread.empty() && !receiveMore();
}

bool Client::receiveMore() {
    char buffer[65536];
    const ssize_t size = ::recv(m_descriptor, buffer, sizeof buffer, 0);
    // A peer that closes without having read everything resets the connection.
    if (size < 0 && errno != ECONNRESET)
        fail("recv");
    m_unread.append(buffer, size > 0 ? static_cast<std::size_t>(size) : 0);
    return size > 0;
}

std::string enumerateBody(const std::string& className, const std::string& nameSpace) {
    return enumerateHead(className, nameSpace) + flag(true);
}

std::string enumerateBody(const std::string& className, const std::vector<std::string>& properties) {
    std::string body =
        enumerateHead(className, "root/cimv2") + flag(false) + 'k' + support::wire::number(properties.size());
    for (const std::string& property : properties)
        body += text(property);
    return body;
}

std::string operationBody(unsigned operation, unsigned version) {
    return bigEndian(version, 4) + bigEndian(operation, 1) + 'j' + text("root/cimv2");
}

std::string httpRequest(const std::string& body, const std::string& lines, const std::string& method) {
    return method + " /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/x-owbinary\r\n" +
           lines + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string xmlRequest(const std::string& operation, const std::string& arguments, const std::string& lines) {
    const std::string body = "<?xml version=\"1.0\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE "
                             "ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"" +
                             operation +
                             "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/>"
                             "</LOCALNAMESPACEPATH>" +
                             arguments + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
    return "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml\r\n" + lines +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::vector<OpenWBEM::CIMInstance> instancesIn(const std::string& body) {
    using namespace OpenWBEM::binary;
    Reader in(body.data(), body.size());
    in.expect(static_cast<OpenWBEM::UInt8>(Result::ok));
    in.expect(sig::instanceEnumeration);
    ObjectReader objects(in);
    std::vector<OpenWBEM::CIMInstance> instances;
    while (in.peek() != sig::endOfInstances)
        instances.push_back(objects.instance());
    in.expect(sig::endOfInstances);
    in.expect(sig::endOfInstances);
    if (!in.atEnd())
        OW_THROW(OpenWBEM::IOException, "bytes after the end");
    return instances;
}
