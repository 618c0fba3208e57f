#include "commands/Doctor.hpp"

#include "agent/Endpoint.hpp"
#include "commands/Report.hpp"
#include "doctor/HostChecks.hpp"
#include "doctor/ManagerChecks.hpp"
#include "doctor/SocketCheck.hpp"

namespace owbctl {

using namespace agent;

namespace {

std::string meaningOf(const Endpoint& endpoint) {
    const std::string protocol = endpoint.protocol;
    if (!endpoint.socketPath.empty())
        return protocol + " over the socket " + endpoint.socketPath;
    if (endpoint.port == Endpoint::ownSocket)
        return protocol + " over the client library's own socket";
    return protocol + " to " + endpoint.host + ", port " + endpoint.port;
}

const char* const form =
    "The form is scheme://[user[:password]@]host[:port]; the port of a socket is its path, with each / "
    "written as %2f";

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

Check checkUrl(const std::string& url) {
    const std::string why = reconnect();
    const std::string shown = withoutPassword(url);
    if (!why.empty())
        return {Check::Result::fail, "URL", shown + ": " + withoutPassword(why),
                contains(why, "MalformedURL") || contains(why, "UnescapeChar") ? form : ""};
    const std::size_t host = url.find("://") == std::string::npos ? 0 : url.find("://") + 3;
    const std::string finding = shown + ": " + meaningOf(endpointOf(url));
    if (url.find(":/", host) != std::string::npos)
        return {Check::Result::warn, "URL", finding + ", since its port is empty", form};
    return {Check::Result::ok, "URL", finding, {}};
}

} // namespace

int runChecks(const std::string& url, const Trace& trace, Format& format) {
    bool hasFailed = false;
    const auto report = [&](const Check& check) {
        format.writeCheck(check);
        hasFailed = hasFailed || check.result == Check::Result::fail;
    };
    const Check urlCheck = checkUrl(url);
    report(urlCheck);
    if (urlCheck.result != Check::Result::fail) {
        const std::string socket = endpointOf(url).socketPath;
        if (!socket.empty())
            report(checkSocket(socket));
        report(checkManager(withoutPassword(url), trace));
        if (const std::optional<Check> login = checkLogin(url))
            report(*login);
    }
    report(checkTrace());
    report(checkProcessTable());
    report(checkSoftwareInventory());
    format.endChecks();
    return hasFailed ? exitFailed : 0;
}

} // namespace owbctl
