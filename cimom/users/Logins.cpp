#include "users/Logins.hpp"

namespace cimom {

void Logins::logIn(const std::string& address, const std::string& user, const std::string& password,
                   PasswordCheck::Done done) {
    if (isBlocked(address)) {
        done(Verdict::tooOften);
        return;
    }
    m_passwords.check(user, password, [this, address, done = std::move(done)](Verdict verdict) {
        if (isBlocked(address)) {
            done(Verdict::tooOften);
            return;
        }
        if (verdict == Verdict::wrong)
            addFailure(address);
        done(verdict);
    });
}

bool Logins::isBlocked(const std::string& address) const {
    const auto found = m_failures.find(address);
    return found != m_failures.end() && found->second.size() == limit &&
           m_now() - found->second.front() < period;
}

void Logins::addFailure(const std::string& address) {
    const Time now = m_now();
    // Forgets addresses without a failure in the period, so that the map stays small.
    for (auto each = m_failures.begin(); each != m_failures.end();)
        each = each->second.back() <= now - period ? m_failures.erase(each) : std::next(each);
    std::deque<Time>& times = m_failures[address];
    times.push_back(now);
    if (times.size() > limit)
        times.pop_front();
}

} // namespace cimom
