#ifndef CIMOM_HTTP_SESSION_SETTINGS_HPP_INCLUDED
#define CIMOM_HTTP_SESSION_SETTINGS_HPP_INCLUDED
#include "http/Limits.hpp"
#include "protocol/Handler.hpp"
#include "users/PasswordCheck.hpp"

#include <functional>
#include <string>

namespace cimom {

/** Tells later whether a user has a password, see PasswordCheck::check(). */
using CheckPassword =
    std::function<void(const std::string& user, const std::string& password, PasswordCheck::Done done)>;

/** How the sessions of an object manager serve their clients. Does not change while there are any. */
struct SessionSettings {
    const Handler& binary;
    const Handler& xml;
    Limits limits;
    /** Null when nobody may log in. */
    CheckPassword checkPassword{};
    /** Requests that are answered well are logged, too. */
    bool isVerbose = false;
};

} // namespace cimom
#endif
