#include "doctor/Doctor.hpp"

#include "agent/Connection.hpp"
#include "agent/Endpoint.hpp"
#include "doctor/HostChecks.hpp"
#include "doctor/LoginCheck.hpp"
#include "doctor/ManagerCheck.hpp"
#include "doctor/SocketCheck.hpp"
#include "doctor/TraceCheck.hpp"

namespace owbctl {
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
    "Give it as scheme://[user[:password]@]host[:port]; the port of a socket is its path, with each "
    "/ written as %2f";

bool holds(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

Check checkUrl(const std::string& url) {
    const std::string why = connectAnew();
    const std::string shown = withoutPassword(url);
    if (!why.empty())
        return {Check::Result::fail, "URL", shown + ": " + withoutPassword(why),
                holds(why, "MalformedURL") || holds(why, "UnescapeChar") ? form : ""};
    const std::size_t host = url.find("://") == std::string::npos ? 0 : url.find("://") + 3;
    const std::string finding = shown + ": " + meaningOf(endpointOf(url));
    if (url.find(":/", host) != std::string::npos)
        return {Check::Result::warn, "URL", finding + ", since its port is empty", form};
    return {Check::Result::ok, "URL", finding, {}};
}

} // namespace

void examine(const std::string& url, const Trace& trace, const std::function<void(const Check&)>& report) {
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
}

} // namespace owbctl
