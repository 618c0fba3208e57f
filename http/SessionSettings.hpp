#ifndef HTTP_SESSION_SETTINGS_HPP_INCLUDED
#define HTTP_SESSION_SETTINGS_HPP_INCLUDED
#include "http/Credentials.hpp"
#include "http/Limits.hpp"
#include "protocol/Handler.hpp"
#include "users/PasswordCheck.hpp"

#include <functional>
#include <string>

namespace cimom {

/** Reports what a login from an address comes to, see Logins::logIn(). */
using LogIn =
    std::function<void(const std::string& address, const Credentials& given, PasswordCheck::Done done)>;

/** How the sessions of an object manager serve their clients. Does not change while there are any. */
struct SessionSettings {
    const Handler& binary;
    const Handler& xml;
    Limits limits;
    /** Null when there are no logins. */
    LogIn logIn{};
    /** Clients on the network must log in to read, too. Only when there are logins. */
    bool requiresLogin = false;
    /** Requests that are answered well are logged, too. */
    bool isVerbose = false;
};

} // namespace cimom
#endif
