#include "http/Credentials.hpp"

#include "system/Text.hpp"

#include <boost/beast/core/detail/base64.hpp>
#include <boost/beast/core/string.hpp>

namespace cimom {

namespace base64 = boost::beast::detail::base64;

std::optional<Credentials> basicCredentials(std::string_view authorization) {
    const std::string_view value = trimmed(authorization);
    const std::string_view scheme = value.substr(0, value.find(' '));
    if (!boost::beast::iequals({scheme.data(), scheme.size()}, "Basic"))
        return std::nullopt;
    const std::string_view encoded = trimmed(value.substr(scheme.size()));
    std::string text(base64::decoded_size(encoded.size()) + 2, '\0'); // some room for what has no whole group
    const auto [written, read] = base64::decode(text.data(), encoded.data(), encoded.size());
    text.resize(written);
    const std::size_t colon = text.find(':');
    const std::string_view padding = encoded.substr(read);
    const bool isPadding = padding.size() <= 2 && padding.find_first_not_of('=') == std::string_view::npos;
    if (!isPadding || colon == std::string::npos || text.find('\0') != std::string::npos)
        return Credentials();
    return Credentials{text.substr(0, colon), text.substr(colon + 1)};
}

} // namespace cimom
