#include "agent/Endpoint.hpp"

#include "agent/Number.hpp"

#include <OW_String.hpp>
#include <OW_URL.hpp>

#include <charconv>

namespace owbctl {
namespace {

constexpr long highestPort = 65535;

std::string percentDecoded(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const char* const code = text.data() + i + 1;
        if (text[i] == '%' && text.size() - i > 2 &&
            std::from_chars(code, code + 2, byte, 16).ptr == code + 2) {
            result += static_cast<char>(byte);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

/** The scheme names the client library's own socket, too. An installed OpenWBEM leaves the port of "host:/"
 * empty and means the default one. */
std::string portOf(const OpenWBEM::URL& url) {
    if (url.scheme == "ipc" || url.port.equalsIgnoreCase(Endpoint::ownSocket))
        return Endpoint::ownSocket;
    if (url.port.empty())
        return url.scheme.endsWith("s") ? "5989" : "5988";
    return url.port.c_str();
}

bool isSocket(const std::string& port) {
    return port != Endpoint::ownSocket && decimal(port).value_or(highestPort + 1) > highestPort;
}

} // namespace

Endpoint endpointOf(const std::string& url) {
    const OpenWBEM::URL parts(OpenWBEM::String(url.c_str()));
    const std::string scheme = parts.scheme.c_str();
    const std::string port = portOf(parts);
    return {scheme.rfind("owbinary", 0) == 0 ? "binary protocol" : "CIM-XML", parts.host.c_str(), port,
            isSocket(port) ? percentDecoded(port) : std::string()};
}

std::string withoutPassword(const std::string& url) {
    const std::size_t scheme = url.find("://");
    const std::size_t user = scheme == std::string::npos ? 0 : scheme + 3;
    const std::size_t userEnd = url.rfind('@'); // of a password with an @ nothing may be left
    const std::size_t colon = url.find(':', user);
    if (userEnd == std::string::npos || colon >= userEnd)
        return url;
    return url.substr(0, colon + 1) + "***" + url.substr(userEnd);
}

} // namespace owbctl
