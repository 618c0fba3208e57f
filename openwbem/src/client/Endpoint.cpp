#include "client/Endpoint.hpp"

#include "OW_HTTPUtils.hpp"
#include "OW_SocketAddress.hpp"
#include "util/Percent.hpp"

#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <cstring>
#include <memory>
#include <netdb.h>
#include <optional>
#include <sys/un.h>

namespace OpenWBEM {
namespace {

const char builtInSocket[] = "/tmp/OW@LCL@APIIPC_72859_Xq47Bf_P9r761-5_J-7_Q";

// Unlike util::percentDecoded(), rejects a percent sign without two hexadecimal digits.
std::string percentDecoded(const std::string& text) {
    for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 3))
        if (!util::isEscape(text, at))
            OW_THROW(UnescapeCharForURLException, ("Invalid escape: " + text.substr(at)).c_str());
    return util::percentDecoded(text);
}

std::optional<UInt16> tcpPort(const std::string& text) {
    UInt16 port = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, port);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return std::nullopt;
    return port;
}

void setUnixAddress(const std::string& path, Endpoint& endpoint) {
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path || path.find('\0') != std::string::npos)
        OW_THROW(MalformedURLException, ("Not a socket path: " + path).c_str());
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, path.size());
    endpoint.path = path;
    std::memcpy(&endpoint.address, &address, sizeof address);
    endpoint.addressSize = sizeof address;
}

bool isBracketed(const std::string& host) {
    return host.size() > 2 && host.front() == '[' && host.back() == ']';
}

std::string withoutBrackets(const std::string& host) {
    return isBracketed(host) ? host.substr(1, host.size() - 2) : host;
}

void setTcpAddress(const std::string& urlHost, UInt16 port, Endpoint& endpoint) {
    const bool isIPv6 = isBracketed(urlHost);
    const std::string host = withoutBrackets(urlHost);
    addrinfo wanted{};
    wanted.ai_family = isIPv6 ? AF_INET6 : AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = AI_NUMERICSERV | (isIPv6 ? AI_NUMERICHOST : 0);
    addrinfo* found = nullptr;
    const bool isText = host.find('\0') == std::string::npos;
    if (!isText || ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found) != 0)
        OW_THROW(UnknownHostException, host.c_str());
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owned(found, ::freeaddrinfo);
    std::memcpy(&endpoint.address, found->ai_addr, found->ai_addrlen);
    endpoint.addressSize = found->ai_addrlen;
}

void setHost(const std::string& urlHost, Endpoint& endpoint) {
    in_addr ignored;
    endpoint.host = withoutBrackets(urlHost);
    endpoint.hostIsAddress =
        isBracketed(urlHost) || ::inet_pton(AF_INET, endpoint.host.c_str(), &ignored) == 1;
    if (endpoint.hostIsAddress) // a certificate has no zone
        endpoint.host.resize(std::min(endpoint.host.find('%'), endpoint.host.size()));
}

} // namespace

Endpoint endpointOf(const URL& url) {
    Endpoint endpoint;
    endpoint.usesTls = url.scheme.endsWith("s");
    const std::string host = percentDecoded(url.host.c_str());
    setHost(host, endpoint);
    const std::string port = url.port.c_str();
    if (url.port.equalsIgnoreCase("owipc") || url.scheme == "ipc")
        setUnixAddress(builtInSocket, endpoint);
    else if (const std::optional<UInt16> number = tcpPort(port))
        setTcpAddress(host, *number, endpoint);
    else
        setUnixAddress(percentDecoded(port), endpoint);
    return endpoint;
}

bool speaksBinary(const URL& url) {
    return url.scheme.startsWith("owbinary") || url.nameSpace == "owbinary";
}

bool isLocalHost(const URL& url) {
    return url.host == "localhost" || url.host == "127.0.0.1";
}

} // namespace OpenWBEM
