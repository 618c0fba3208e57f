#include "doctor/Doctor.hpp"

#include "agent/Connection.hpp"
#include "agent/Endpoint.hpp"
#include "agent/Status.hpp"
#include "doctor/HostChecks.hpp"
#include "doctor/ManagerCheck.hpp"
#include "doctor/SocketCheck.hpp"
#include "doctor/TraceCheck.hpp"

namespace owbctl {
namespace {

std::string meaningOf(const Endpoint& endpoint) {
    const std::string protocol = endpoint.protocol;
    if (!endpoint.socketPath.empty())
        return protocol + " over the socket " + endpoint.socketPath;
    return protocol + " to " + endpoint.host + ", port " + endpoint.port;
}

Check checkUrl(const std::string& url) {
    const std::string why = connectAnew();
    const std::string shown = withoutPassword(url);
    if (!why.empty())
        return {
            Check::Result::fail, "URL", shown + ": " + why,
            "Give it as scheme://[user[:password]@]host[:port]; the port of a socket is its path, with each "
            "/ written as %2f"};
    return {Check::Result::ok, "URL", shown + ": " + meaningOf(endpointOf(url)), {}};
}

} // namespace

std::vector<Check> examine(const std::string& url, const Trace& trace) {
    std::vector<Check> checks{checkUrl(url)};
    if (checks.front().result == Check::Result::ok) {
        const std::string socket = endpointOf(url).socketPath;
        if (!socket.empty())
            checks.push_back(checkSocket(socket));
        checks.push_back(checkManager(withoutPassword(url), trace));
    }
    checks.push_back(checkTrace());
    checks.push_back(checkProcessTable());
    checks.push_back(checkSoftwareInventory());
    return checks;
}

} // namespace owbctl
