#ifndef HTTP_CREDENTIALS_HPP_INCLUDED
#define HTTP_CREDENTIALS_HPP_INCLUDED
#include <optional>
#include <string>
#include <string_view>

namespace http {

/** A user name and a password, as a client gives them. */
struct Credentials {
    std::string user;
    std::string password;
};

/**
 * The credentials in a field Authorization of the scheme Basic (RFC 7617); nothing for another scheme.
 * Malformed credentials give an empty name, which no user has.
 */
std::optional<Credentials> basicCredentials(std::string_view authorization);

} // namespace http
#endif
