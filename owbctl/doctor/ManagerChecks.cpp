#include "doctor/ManagerChecks.hpp"

#include "agent/Endpoint.hpp"
#include "agent/Group.hpp"
#include "util/Base64.hpp"
#include "util/Descriptor.hpp"

#include <OW_URL.hpp>

#include <chrono>
#include <cstdio>
#include <memory>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

namespace owbctl {

using namespace agent;

namespace {

using Result = Check::Result;

std::string milliseconds(std::chrono::steady_clock::duration time) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f ms", std::chrono::duration<double, std::milli>(time).count());
    return text;
}

/** Seconds for each step of the login check. */
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

/** A socket that is connected to a host; owns nothing if no address of the host accepts. */
util::Descriptor connectedToHost(std::string host, const std::string& port) {
    if (host.size() > 2 && host.front() == '[')
        host = host.substr(1, host.size() - 2);
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &wanted, &found) != 0)
        return util::Descriptor(-1);
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
    for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
        util::Descriptor descriptor = connectedTo(each->ai_addr, each->ai_addrlen);
        if (descriptor.isOpen())
            return util::Descriptor(descriptor.release());
    }
    return util::Descriptor(-1);
}

util::Descriptor connectedTo(const Endpoint& endpoint) {
    return endpoint.socketPath.empty() ? connectedToHost(endpoint.host, endpoint.port)
                                       : connectedToPath(endpoint.socketPath);
}

/** Sends a request and returns the first line of the answer; empty if there is none. */
std::string firstLineOfAnswer(int connection, const std::string& request) {
    std::string line;
    if (::send(connection, request.data(), request.size(), MSG_NOSIGNAL) < 0)
        return line;
    for (char c = '\0'; line.size() < 1024 && ::recv(connection, &c, 1, 0) == 1 && c != '\r' && c != '\n';)
        line += c;
    return line;
}

/** A request that changes nothing: the names of the classes (DSP0200, EnumerateClassNames). */
struct Request {
    const char* contentType;
    std::string body;
};

Request binaryRequest() {
    using namespace std::string_literals;
    return {"application/x-owbinary",
            "\x00\x2d\xc6\xc8\x18"s        // version 3000008, EnumerateClassNames
            "j\x0aroot/cimv2j\x00h\x01"s}; // namespace, any class, with its subclasses
}

Request xmlRequest() {
    return {"application/xml",
            R"(<?xml version="1.0" encoding="utf-8"?><CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" )"
            R"(PROTOCOLVERSION="1.0"><SIMPLEREQ><IMETHODCALL NAME="EnumerateClassNames"><LOCALNAMESPACEPATH>)"
            R"(<NAMESPACE NAME="root"/><NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH></IMETHODCALL>)"
            R"(</SIMPLEREQ></MESSAGE></CIM>)"};
}

std::string message(const Request& request, const std::string& host, const std::string& credentials) {
    return "POST /cimom HTTP/1.1\r\nHost: " + host + "\r\nContent-Type: " + request.contentType +
           "; charset=\"utf-8\"\r\nContent-Length: " + std::to_string(request.body.size()) +
           "\r\nCIMOperation: MethodCall\r\nCIMMethod: EnumerateClassNames\r\nCIMObject: root%2Fcimv2\r\n"
           "Authorization: Basic " +
           util::base64Encoded(credentials) + "\r\nConnection: close\r\n\r\n" + request.body;
}

constexpr const char* loginName = "login";

Check notChecked(const std::string& user, const std::string& why) {
    return {Result::warn, loginName, "cannot check user " + user + ": " + why, {}};
}

Check loginCheck(const std::string& user, const std::string& statusLine) {
    const std::size_t blank = statusLine.find(' ');
    const std::string status = blank == std::string::npos ? "" : statusLine.substr(blank + 1);
    if (status.compare(0, 1, "2") == 0)
        return {Result::ok, loginName, "user " + user + " is not rejected", {}};
    if (status.compare(0, 3, "401") == 0)
        return {Result::fail, loginName, "user " + user + " is rejected: " + status,
                "Correct the name and the password in the URL, or set the password in the users file of the "
                "object manager (owbcimom-passwd)"};
    return notChecked(user, status.empty() ? "no answer" : status);
}

} // namespace

Check checkManager() {
    constexpr const char* name = "manager";
    const std::string what =
        "group " + std::to_string(groupOfCheck) + " (" + classOf(groupOfCheck).name + ")";
    const auto start = std::chrono::steady_clock::now();
    const Group group = readGroup(groupOfCheck);
    const std::string time = milliseconds(std::chrono::steady_clock::now() - start);
    if (group.status != OWB_DONE)
        return {Result::fail, name, "cannot read " + what + ": " + group.failure.text,
                "Check that the object manager runs and serves this URL, and read its log"};
    if (group.rows.empty())
        return {Result::warn, name, "answers in " + time + ", but has no instance for " + what,
                "Check that the object manager has providers for the classes that 'owbctl groups' lists"};
    return {Result::ok, name, "answers for " + what + " in " + time, {}};
}

std::optional<Check> checkLogin(const std::string& url) {
    const OpenWBEM::URL parts(OpenWBEM::String(url.c_str()));
    if (parts.principal.empty())
        return std::nullopt;
    const std::string user = parts.principal.c_str();
    const Endpoint endpoint = endpointOf(url);
    if (parts.scheme.endsWith("s"))
        return notChecked(user, "the doctor has no TLS");
    if (endpoint.port == Endpoint::ownSocket)
        return notChecked(user, "only the client library knows its socket");
    const bool isBinary = parts.scheme.startsWith("owbinary");
    const util::Descriptor connection = connectedTo(endpoint);
    return loginCheck(user, firstLineOfAnswer(connection.number(),
                                              message(isBinary ? binaryRequest() : xmlRequest(),
                                                      endpoint.host, user + ":" + parts.credential.c_str())));
}

} // namespace owbctl
