#include "agent/Endpoint.hpp"

#include "util/Number.hpp"
#include "util/Percent.hpp"

// Before owb.h, which declares functions with the client library's classes only after their headers.
#include <OW_CIMClient.hpp>
#include <OW_Exception.hpp>
#include <OW_String.hpp>
#include <OW_URL.hpp>

#include <owb.h>

namespace agent {
namespace {

constexpr long highestPort = 65535;

/** The scheme "ipc" selects the client library's own socket, too. An installed OpenWBEM gives an empty port
 * for "host:/" and uses the default one. */
std::string portOf(const OpenWBEM::URL& url) {
    if (url.scheme == "ipc" || url.port.equalsIgnoreCase(Endpoint::ownSocket))
        return Endpoint::ownSocket;
    if (url.port.empty())
        return url.scheme.endsWith("s") ? "5989" : "5988";
    return url.port.c_str();
}

bool isSocket(const std::string& port) {
    return port != Endpoint::ownSocket && util::decimal<long>(port).value_or(highestPort + 1) > highestPort;
}

} // namespace

Endpoint endpointOf(const std::string& url) {
    const OpenWBEM::URL parts(OpenWBEM::String(url.c_str()));
    const std::string scheme = parts.scheme.c_str();
    const std::string port = portOf(parts);
    return {scheme.rfind("owbinary", 0) == 0 ? "binary protocol" : "CIM-XML", parts.host.c_str(), port,
            isSocket(port) ? util::percentDecoded(port) : std::string()};
}

std::string withoutPassword(const std::string& url) {
    const std::size_t scheme = url.find("://");
    const std::size_t user = scheme == std::string::npos ? 0 : scheme + 3;
    const std::size_t userEnd = url.rfind('@'); // the last one: a password with an @ must not show in part
    const std::size_t colon = url.find(':', user);
    if (userEnd == std::string::npos || colon >= userEnd)
        return url;
    return url.substr(0, colon + 1) + "***" + url.substr(userEnd);
}

std::string reconnect() {
    try {
        OWB_connect(1);
        return std::string();
    } catch (const OpenWBEM::Exception& reason) {
        return std::string(reason.type()) + ": " + reason.getMessage();
    }
}

bool isConnectionFailure(long status) {
    return status == OWB_NO_CONNECTION || status == OWB_EXCEPTION;
}

std::string failureText(long status, const std::string& url) {
    switch (status) {
    case OWB_NO_INSTANCE:
        return "the object manager at " + url + " returned no instance";
    case OWB_BAD_ARGUMENT:
        return "the library rejected an argument";
    case OWB_NO_CONNECTION:
        return "no connection to the object manager at " + url;
    default:
        return "no answer from the object manager at " + url + ", or it reported an error";
    }
}

} // namespace agent
