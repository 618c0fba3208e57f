#include "doctor/LoginCheck.hpp"

#include "agent/Endpoint.hpp"

#include <OW_URL.hpp>

#include <netdb.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace owbctl {
namespace {

using Result = Check::Result;

constexpr const char* name = "login";
constexpr time_t patience = 10; // seconds for each step

std::string base64(const std::string& text) {
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string result;
    for (std::size_t i = 0; i < text.size(); i += 3) {
        unsigned group = 0;
        for (std::size_t j = i; j < i + 3; ++j)
            group = group << 8 | (j < text.size() ? static_cast<unsigned char>(text[j]) : 0U);
        for (std::size_t j = 0; j < 4; ++j)
            result += i + j > text.size() ? '=' : digits[group >> (18 - 6 * j) & 63];
    }
    return result;
}

/** A connection that is closed at the end; it fails by giving nothing. */
class Connection {
public:
    Connection(const std::string& host, const std::string& port) {
        addrinfo wanted{};
        wanted.ai_socktype = SOCK_STREAM;
        addrinfo* found = nullptr;
        if (::getaddrinfo(host.c_str(), port.c_str(), &wanted, &found) != 0)
            return;
        for (const addrinfo* each = found; each && m_descriptor < 0; each = each->ai_next)
            connectTo(*each);
        ::freeaddrinfo(found);
    }
    ~Connection() { close(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /** Sends a request and receives the first line of the answer. */
    std::string exchange(const std::string& request) const {
        std::string line;
        if (::send(m_descriptor, request.data(), request.size(), MSG_NOSIGNAL) < 0)
            return line;
        for (char c = '\0';
             line.size() < 1024 && ::recv(m_descriptor, &c, 1, 0) == 1 && c != '\r' && c != '\n';)
            line += c;
        return line;
    }

private:
    void connectTo(const addrinfo& address) {
        m_descriptor = ::socket(address.ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const timeval time{patience, 0};
        ::setsockopt(m_descriptor, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
        ::setsockopt(m_descriptor, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
        if (::connect(m_descriptor, address.ai_addr, address.ai_addrlen) != 0)
            close();
    }
    void close() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
    }

    int m_descriptor = -1;
};

/** Asks for the names of the classes (DSP0200, EnumerateClassNames). */
std::string request(const std::string& host, const std::string& credentials) {
    const std::string body =
        R"(<?xml version="1.0" encoding="utf-8"?><CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" )"
        R"(PROTOCOLVERSION="1.0"><SIMPLEREQ><IMETHODCALL NAME="EnumerateClassNames"><LOCALNAMESPACEPATH>)"
        R"(<NAMESPACE NAME="root"/><NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH></IMETHODCALL></SIMPLEREQ>)"
        R"(</MESSAGE></CIM>)";
    return "POST /cimom HTTP/1.1\r\nHost: " + host +
           "\r\nContent-Type: application/xml; charset=\"utf-8\"\r\nContent-Length: " +
           std::to_string(body.size()) +
           "\r\nCIMOperation: MethodCall\r\nCIMMethod: EnumerateClassNames\r\nCIMObject: root%2Fcimv2\r\n"
           "Authorization: Basic " +
           base64(credentials) + "\r\nConnection: close\r\n\r\n" + body;
}

Check checkOf(const std::string& user, const std::string& statusLine) {
    const std::size_t blank = statusLine.find(' ');
    const std::string status = blank == std::string::npos ? "" : statusLine.substr(blank + 1);
    if (status.compare(0, 1, "2") == 0)
        return {Result::ok, name, "user " + user + " is not refused", {}};
    if (status.compare(0, 3, "401") == 0)
        return {Result::fail, name, "user " + user + " is refused: " + status,
                "Correct the name and the password of the URL, or set the password in the users file of the "
                "object manager (owbcimom-passwd)"};
    return {Result::warn,
            name,
            "user " + user + " cannot be checked: " + (status.empty() ? "no answer" : status),
            {}};
}

} // namespace

std::optional<Check> checkLogin(const std::string& url) {
    const OpenWBEM::URL parts(OpenWBEM::String(url.c_str()));
    const Endpoint endpoint = endpointOf(url);
    const std::string scheme = parts.scheme.c_str();
    if (parts.principal.empty() || !endpoint.socketPath.empty() || endpoint.port == Endpoint::ownSocket ||
        scheme.back() == 's')
        return std::nullopt;
    const std::string user = parts.principal.c_str();
    const std::string password = parts.credential.c_str();
    std::string host = endpoint.host;
    if (host.size() > 2 && host.front() == '[')
        host = host.substr(1, host.size() - 2);
    return checkOf(user,
                   Connection(host, endpoint.port).exchange(request(endpoint.host, user + ":" + password)));
}

} // namespace owbctl
