#include "users/Logins.hpp"

#include <utility>

namespace cimom {

void Logins::logIn(const std::string& address, const std::string& user, const std::string& password,
                   PasswordCheck::Done done) {
    if (m_failed.isFull(address, m_now())) {
        done(Verdict::tooOften);
        return;
    }
    m_passwords.check(user, password, [this, address, done = std::move(done)](Verdict verdict) {
        if (m_failed.isFull(address, m_now())) {
            done(Verdict::tooOften);
            return;
        }
        if (verdict == Verdict::wrong)
            m_failed.add(address, m_now());
        done(verdict);
    });
}

} // namespace cimom
