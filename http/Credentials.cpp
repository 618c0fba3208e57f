#include "http/Credentials.hpp"

#include "util/Ascii.hpp"
#include "util/Base64.hpp"

namespace http {

std::optional<Credentials> basicCredentials(std::string_view authorization) {
    const std::string_view value = ascii::trim(authorization);
    const std::string_view scheme = value.substr(0, value.find(' '));
    if (!ascii::equalsIgnoreCase(scheme, "Basic"))
        return std::nullopt;
    const std::optional<std::string> text = util::base64Decoded(ascii::trim(value.substr(scheme.size())));
    const std::size_t colon = text ? text->find(':') : std::string::npos;
    if (colon == std::string::npos || text->find('\0') != std::string::npos)
        return Credentials();
    return Credentials{text->substr(0, colon), text->substr(colon + 1)};
}

} // namespace http
