#ifndef CIMOM_USERS_LOGINS_HPP_INCLUDED
#define CIMOM_USERS_LOGINS_HPP_INCLUDED
#include "users/FailedLogins.hpp"
#include "users/PasswordCheck.hpp"

#include <functional>
#include <string>

namespace cimom {

/** Lets clients log in, as long as not too many logins from their address have failed, see FailedLogins. */
class Logins {
public:
    using Now = std::function<FailedLogins::Time()>;

    /** @param passwords must outlive this object */
    explicit Logins(PasswordCheck& passwords, Now now = std::chrono::steady_clock::now)
        : m_passwords(passwords)
        , m_now(std::move(now)) {}
    Logins(const Logins&) = delete;
    Logins& operator=(const Logins&) = delete;

    /**
     * Checks a password. Calls `done` once, from within this call or, when the password had to be checked, as
     * PasswordCheck::check() does. While an address is blocked, no client there learns whether a password is
     * right, not even of a check that began before: who asks for many at a time learns no more.
     */
    void logIn(const std::string& address, const std::string& user, const std::string& password,
               PasswordCheck::Done done);

private:
    PasswordCheck& m_passwords;
    Now m_now;
    FailedLogins m_failed;
};

} // namespace cimom
#endif
