#include "doctor/ManagerChecks.hpp"

#include "agent/Endpoint.hpp"
#include "agent/Group.hpp"
#include "doctor/Connection.hpp"
#include "util/Base64.hpp"

#include <OW_URL.hpp>

#include <chrono>
#include <cstdio>

namespace owbctl {

using namespace agent;

namespace {

using Result = Check::Result;

std::string milliseconds(std::chrono::steady_clock::duration time) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f ms", std::chrono::duration<double, std::milli>(time).count());
    return text;
}

/** Sends a request and returns the first line of the answer; empty if there is none. */
std::string firstLineOfAnswer(Connection& connection, const std::string& request) {
    std::string line;
    if (!connection.send(request))
        return line;
    for (char c = '\0'; line.size() < 1024 && connection.receive(&c, 1) == 1 && c != '\r' && c != '\n';)
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
    if (endpoint.port == Endpoint::ownSocket)
        return notChecked(user, "only the client library knows its socket");
    const bool isBinary = parts.scheme.startsWith("owbinary");
    Connection connection(url);
    const std::string line =
        firstLineOfAnswer(connection, message(isBinary ? binaryRequest() : xmlRequest(), endpoint.host,
                                              user + ":" + parts.credential.c_str()));
    return connection.failure().empty() ? loginCheck(user, line) : notChecked(user, connection.failure());
}

} // namespace owbctl
