#include "client/Endpoint.hpp"

#include "OW_HTTPUtils.hpp"

#include <algorithm>
#include <cctype>
#include <sys/un.h>

namespace OpenWBEM {
namespace {

const char builtInSocket[] = "/tmp/OW@LCL@APIIPC_72859_Xq47Bf_P9r761-5_J-7_Q";

[[noreturn]] void malformed(const std::string& message) {
    OW_THROW(MalformedURLException, message.c_str());
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string percentDecoded(const std::string& text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high < 0 ? -1 : hexDigit(text[i + 2]);
        if (low < 0)
            OW_THROW(UnescapeCharForURLException, ("Invalid escape: " + text.substr(i)).c_str());
        decoded += static_cast<char>(high << 4 | low);
        i += 2;
    }
    return decoded;
}

bool isTcpPort(const std::string& port) {
    return port.size() <= 5 &&
           std::all_of(port.begin(), port.end(), [](unsigned char c) { return std::isdigit(c); }) &&
           std::stoul(port) <= 65535;
}

} // namespace

std::string socketPath(const URL& url) {
    if (url.port.equalsIgnoreCase("owipc") || url.scheme == "ipc")
        return builtInSocket;
    const bool isBinary = url.scheme.startsWith("owbinary") || url.nameSpace == "owbinary";
    if (!isBinary || url.scheme.endsWith("s"))
        malformed(std::string("Unsupported protocol: ") + url.scheme.c_str() +
                  "; this client speaks owbinary.wbem");
    const std::string port = url.port.c_str();
    if (isTcpPort(port))
        malformed("Unsupported address: port " + port + "; this client reaches Unix-domain sockets only");

    const std::string path = percentDecoded(port);
    if (path.size() >= sizeof(sockaddr_un::sun_path) || path.find('\0') != std::string::npos)
        malformed("Not a socket path: " + path);
    return path;
}

bool isLocalHost(const URL& url) {
    return url.host == "localhost" || url.host == "127.0.0.1";
}

} // namespace OpenWBEM
