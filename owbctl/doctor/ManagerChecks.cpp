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

namespace owbctl {

using namespace agent;

namespace {

using Result = Check::Result;

/** The operating system: every object manager has this small instance. */
constexpr long askedFor = 4;

std::string milliseconds(std::chrono::steady_clock::duration time) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f ms", std::chrono::duration<double, std::milli>(time).count());
    return text;
}

/** Seconds for each step of the login check. */
constexpr time_t stepTimeout = 10;

/** A socket that is connected to a host; owns nothing if no address of the host accepts. */
util::Descriptor connectedTo(const std::string& host, const std::string& port) {
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &wanted, &found) != 0)
        return util::Descriptor(-1);
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
    for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
        util::Descriptor descriptor(::socket(each->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const timeval time{stepTimeout, 0};
        ::setsockopt(descriptor.number(), SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
        ::setsockopt(descriptor.number(), SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
        if (::connect(descriptor.number(), each->ai_addr, each->ai_addrlen) == 0)
            return util::Descriptor(descriptor.release());
    }
    return util::Descriptor(-1);
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
           util::base64Encoded(credentials) + "\r\nConnection: close\r\n\r\n" + body;
}

Check loginCheck(const std::string& user, const std::string& statusLine) {
    constexpr const char* name = "login";
    const std::size_t blank = statusLine.find(' ');
    const std::string status = blank == std::string::npos ? "" : statusLine.substr(blank + 1);
    if (status.compare(0, 1, "2") == 0)
        return {Result::ok, name, "user " + user + " is not rejected", {}};
    if (status.compare(0, 3, "401") == 0)
        return {Result::fail, name, "user " + user + " is rejected: " + status,
                "Correct the name and the password in the URL, or set the password in the users file of the "
                "object manager (owbcimom-passwd)"};
    return {
        Result::warn, name, "cannot check user " + user + ": " + (status.empty() ? "no answer" : status), {}};
}

} // namespace

Check checkManager(const std::string& url, const Trace& trace) {
    constexpr const char* name = "manager";
    const std::string what = "group " + std::to_string(askedFor) + " (" + classOf(askedFor).name + ")";
    const auto start = std::chrono::steady_clock::now();
    const Group group = readGroup(askedFor);
    const std::string time = milliseconds(std::chrono::steady_clock::now() - start);
    if (group.status != OWB_DONE) {
        const std::string reason = trace.lastError();
        return {Result::fail, name,
                "cannot read " + what + ": " + (reason.empty() ? failureText(group.status, url) : reason),
                "Check that the object manager runs and serves this URL, and read its log"};
    }
    if (group.rows.empty())
        return {Result::warn, name, "answers in " + time + ", but has no instance for " + what,
                "Check that the object manager has providers for the classes that 'owbctl groups' lists"};
    return {Result::ok, name, "answers for " + what + " in " + time, {}};
}

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
    const util::Descriptor connection = connectedTo(host, endpoint.port);
    return loginCheck(user,
                      firstLineOfAnswer(connection.number(), request(endpoint.host, user + ":" + password)));
}

} // namespace owbctl
