#include "doctor/TlsCheck.hpp"

#include "agent/Endpoint.hpp"
#include "doctor/Connection.hpp"

namespace owbctl {
namespace {

using owtls::TlsServer;
using Result = Check::Result;

constexpr const char* handshakeName = "TLS";
constexpr const char* certificateName = "TLS cert";
constexpr std::int64_t secondsOfDay = 24 * 60 * 60;

struct Advice {
    /** Part of the reason of a failure. */
    const char* reason;
    const char* text;
};

constexpr const char* trustIssuer = "Set OWB_TLS_CA to a file with the certificate of the issuer";
constexpr const char* useName = "Use a host of the certificate in the URL, or issue one for this host";
constexpr const char* renew = "Renew the certificate of the object manager";
constexpr const char* showCertificate =
    "Set OWB_TLS_CERT and OWB_TLS_KEY to a certificate that the object manager accepts";

constexpr Advice advices[] = {
    {"issuer certificate", trustIssuer},
    {"self-signed", trustIssuer},
    {"mismatch", useName},
    {"certificate has expired", renew},
    {"too weak", renew},
    {"alert handshake failure", showCertificate},
    {"wrong version number", "This port has no TLS: use a scheme without s, or another port"},
    {"cannot load", "Correct the path in OWB_TLS_CA, OWB_TLS_CERT or OWB_TLS_KEY"},
};

std::string adviceFor(const std::string& failure) {
    for (const Advice& advice : advices)
        if (failure.find(advice.reason) != std::string::npos)
            return advice.text;
    return {};
}

std::string days(std::int64_t seconds) {
    const std::int64_t count = seconds / secondsOfDay;
    return std::to_string(count) + (count == 1 ? " day" : " days");
}

Check handshakeCheck(const TlsServer& server, const std::string& failure) {
    const std::string chosen = server.protocol.empty() ? "" : server.protocol + ", " + server.cipher;
    if (failure == Connection::noTls)
        return {Result::warn, handshakeName, "cannot check TLS: " + failure, {}};
    if (!failure.empty())
        return {Result::fail, handshakeName, failure + (chosen.empty() ? "" : " (" + chosen + ")"),
                adviceFor(failure)};
    if (!owtls::tlsSettings().verifiesServer)
        return {Result::warn, handshakeName, chosen + ", server not verified: OWB_TLS_VERIFY is 0",
                "Anyone between here and the object manager can read passwords: set OWB_TLS_CA instead"};
    return {Result::ok, handshakeName, chosen + ", server verified", {}};
}

Check certificateCheck(const TlsServer& server) {
    const std::string names = server.subject + ", issued by " + server.issuer + ", ";
    if (server.untilBegin > 0)
        return {Result::fail, certificateName, names + "not valid before " + server.firstDay,
                "Set the clock of this host, or of the host that issued the certificate"};
    if (server.untilEnd < 0)
        return {Result::fail, certificateName, names + "expired on " + server.lastDay, renew};
    const std::string finding = names + days(server.untilEnd) + " left, until " + server.lastDay;
    const bool isNearEnd = server.untilEnd < daysOfWarning * secondsOfDay;
    return {isNearEnd ? Result::warn : Result::ok, certificateName, finding, isNearEnd ? renew : ""};
}

} // namespace

std::vector<Check> checkTls(const std::string& url) {
    if (!usesTls(url) || agent::endpointOf(url).port == agent::Endpoint::ownSocket)
        return {};
    const Connection connection(url);
    if (!connection.isConnected())
        return {};
    const TlsServer server = connection.server();
    std::vector<Check> checks{handshakeCheck(server, connection.failure())};
    if (!server.lastDay.empty())
        checks.push_back(certificateCheck(server));
    return checks;
}

} // namespace owbctl
