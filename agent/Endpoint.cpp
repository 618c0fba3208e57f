#include "agent/Endpoint.hpp"

#include "util/Number.hpp"
#include "util/Percent.hpp"

#include <OW_Exception.hpp>
#include <OW_String.hpp>
#include <OW_URL.hpp>

#include <cctype>

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

std::string urlOfSocket(const std::string& path) {
    static const char digits[] = "0123456789ABCDEF";
    // A number as port means TCP, and other words a socket that has a name: a slash makes it a path.
    const std::string text = path.find('/') == std::string::npos ? "./" + path : path;
    std::string url = "owbinary.wbem://localhost:";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0)
            url += c;
        else
            url.append({'%', digits[byte >> 4], digits[byte & 0xF]});
    }
    return url;
}

std::string urlOf(const std::string& text) {
    const std::string socket = "unix:";
    return text.rfind(socket, 0) == 0 ? urlOfSocket(text.substr(socket.size())) : text;
}

std::string portError(const std::string& url) {
    try {
        const std::string port = OpenWBEM::URL(OpenWBEM::String(url.c_str())).port.c_str();
        const bool isNumber = !port.empty() && port.find_first_not_of("0123456789") == std::string::npos;
        const long number = util::decimal<long>(port).value_or(highestPort + 1);
        if (!isNumber || (number > 0 && number <= highestPort))
            return std::string();
        return "port " + port + " is out of range, 1 to " + std::to_string(highestPort);
    } catch (const OpenWBEM::Exception&) { // malformed: reconnect() reports it
        return std::string();
    }
}

std::string peerName(const std::string& url) {
    try {
        const Endpoint endpoint = endpointOf(url);
        if (!endpoint.socketPath.empty())
            return endpoint.socketPath;
        if (endpoint.port == Endpoint::ownSocket)
            return "the client library's own socket";
        return endpoint.host + " port " + endpoint.port;
    } catch (const OpenWBEM::Exception&) {
        return withoutPassword(url);
    }
}

} // namespace agent
