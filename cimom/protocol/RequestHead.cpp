#include "protocol/RequestHead.hpp"

#include "http/RequestRules.hpp"
#include "util/Ascii.hpp"
#include "util/Percent.hpp"

#include <string>
#include <string_view>

namespace cimom {
namespace {

/** The prefix of the extension fields of a request with M-POST, such as "73-" (RFC 2774); empty if it has
 * none. */
std::string extensionPrefix(const http::Request& request) {
    if (request.method_string() != "M-POST")
        return std::string();
    const std::string man = http::valueOf(request, "Man");
    const std::string parameter = "ns=";
    const std::size_t at = man.find(parameter);
    if (at == std::string::npos)
        return std::string();
    const std::size_t begin = at + parameter.size();
    return man.substr(begin, man.find_first_not_of("0123456789", begin) - begin) + "-";
}

/** The decoded value of an extension field; absent if the request has none. */
std::optional<std::string> extension(const http::Request& request, const std::string& name) {
    const auto found = request.find(extensionPrefix(request) + name);
    if (found == request.end())
        return std::nullopt;
    return util::percentDecoded(std::string(found->value()));
}

} // namespace

std::optional<Protocol> protocolOf(const http::Request& request) {
    const std::string contentType = http::valueOf(request, "Content-Type");
    const std::string_view type = ascii::trim(std::string_view(contentType).substr(0, contentType.find(';')));
    if (ascii::equalsIgnoreCase(type, "application/x-owbinary"))
        return Protocol::binary;
    if (ascii::equalsIgnoreCase(type, "application/xml") || ascii::equalsIgnoreCase(type, "text/xml"))
        return Protocol::xml;
    return std::nullopt;
}

RequestHead requestHead(const http::Request& request, Protocol protocol) {
    return {protocol,
            request.method_string() == "M-POST",
            http::replyForm(request).mayHaveTrailers,
            {extension(request, "CIMMethod"), extension(request, "CIMObject")}};
}

} // namespace cimom
