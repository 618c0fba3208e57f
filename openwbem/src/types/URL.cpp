#include "OW_URL.hpp"

#include "ValueText.hpp"

#include <algorithm>
#include <string>

namespace OpenWBEM {
namespace {

// Splits text at the first mark: keeps the part before it, returns the part after it ("" without a mark).
std::string cutAfter(std::string& text, const std::string& mark) {
    const std::size_t at = text.find(mark);
    if (at == std::string::npos)
        return std::string();
    std::string after = text.substr(at + mark.size());
    text.resize(at);
    return after;
}

// Removes the port from a host and returns it. The colons of an IPv6 address are in its brackets.
std::string cutPort(std::string& host) {
    const std::size_t addressEnd = host.compare(0, 1, "[") == 0 ? host.find(']') : 0;
    std::string rest = host.substr(std::min(addressEnd, host.size()));
    host.resize(host.size() - rest.size());
    std::string port = cutAfter(rest, ":");
    host += rest;
    return port;
}

bool isHost(const std::string& text) {
    const bool isOneWord =
        std::none_of(text.begin(), text.end(), [](unsigned char c) { return c <= ' ' || c == 0x7F; });
    const bool isBracketed = text.find_first_of("[]") != std::string::npos;
    const bool isAddress =
        text.size() > 2 && text.front() == '[' && text.find(']') == text.size() - 1 && text.rfind('[') == 0;
    return !text.empty() && isOneWord && (!isBracketed || isAddress);
}

// Splits text at the first mark: keeps the part after it, returns the part before it ("" without a mark).
std::string cutBefore(std::string& text, const std::string& mark) {
    const std::size_t at = text.find(mark);
    if (at == std::string::npos)
        return std::string();
    std::string before = text.substr(0, at);
    text.erase(0, at + mark.size());
    return before;
}

std::string trimmed(const std::string& text) {
    const char* const blanks = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

URL::URL(const String& given)
    : text(stringOf(trimmed(given.c_str()))) {
    std::string rest = text.c_str();
    const std::string schemeText = cutBefore(rest, "://");
    std::string user = cutBefore(rest, "@");
    std::string path = cutAfter(rest, "/");
    const std::string model = cutAfter(path, "/:");
    const std::string portText = cutPort(rest);
    const std::string password = cutAfter(user, ":");
    if (!isHost(rest)) {
        const std::string message = std::string("Invalid URL: ") + given.c_str();
        OW_THROW(MalformedURLException, message.c_str());
    }

    scheme = schemeText.empty() ? String("http") : stringOf(schemeText).toLowerCase();
    principal = stringOf(user);
    credential = stringOf(password);
    host = stringOf(rest);
    const bool tls = scheme.endsWith("s");
    port = portText.empty() ? String(tls ? "5989" : "5988") : stringOf(portText);
    nameSpace = stringOf(path);
    modelPath = stringOf(model);
}

} // namespace OpenWBEM
