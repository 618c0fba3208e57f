#ifndef HTTP_CREDENTIALS_HPP_INCLUDED
#define HTTP_CREDENTIALS_HPP_INCLUDED
#include <optional>
#include <string>
#include <string_view>

namespace cimom {

/** A name and a password as a client gives them. */
struct Credentials {
    std::string user;
    std::string password;
};

/**
 * The credentials in a header Authorization of the scheme Basic (RFC 7617); nothing for another scheme, and
 * an empty name, which nobody has, for one that is malformed.
 */
std::optional<Credentials> basicCredentials(std::string_view authorization);

} // namespace cimom
#endif
