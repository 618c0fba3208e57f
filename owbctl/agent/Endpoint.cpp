#include "agent/Endpoint.hpp"

#include "arguments/Number.hpp"

#include <OW_URL.hpp>

#include <charconv>
#include <strings.h>

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

bool isSocket(const std::string& port) {
    return strcasecmp(port.c_str(), "owipc") != 0 && decimal(port).value_or(highestPort + 1) > highestPort;
}

} // namespace

Endpoint endpointOf(const std::string& url) {
    const OpenWBEM::URL parts(OpenWBEM::String(url.c_str()));
    const std::string scheme = parts.scheme.c_str();
    const std::string port = parts.port.c_str();
    return {scheme.rfind("owbinary", 0) == 0 ? "binary protocol" : "CIM-XML", parts.host.c_str(), port,
            isSocket(port) ? percentDecoded(port) : std::string()};
}

} // namespace owbctl
