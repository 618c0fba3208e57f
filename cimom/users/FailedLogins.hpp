#ifndef CIMOM_USERS_FAILED_LOGINS_HPP_INCLUDED
#define CIMOM_USERS_FAILED_LOGINS_HPP_INCLUDED
#include <chrono>
#include <cstddef>
#include <deque>
#include <map>
#include <string>

namespace cimom {

/** Counts the logins that have failed, for each address that they came from. */
class FailedLogins {
public:
    using Time = std::chrono::steady_clock::time_point;

    /** Logins that may fail within the period; after the last of them the address is full. */
    static constexpr std::size_t limit = 10;
    static constexpr std::chrono::seconds period{60};

    /** Counts one. */
    void add(const std::string& address, Time now);
    /** Whether as many have failed as may, within the period before now. */
    bool isFull(const std::string& address, Time now) const;

private:
    void forgetBefore(Time time);

    std::map<std::string, std::deque<Time>> m_times; // of the last failures, at most as many as there may be
};

} // namespace cimom
#endif
