#include "users/FailedLogins.hpp"

namespace cimom {

void FailedLogins::add(const std::string& address, Time now) {
    forgetBefore(now - period);
    std::deque<Time>& times = m_times[address];
    times.push_back(now);
    if (times.size() > limit)
        times.pop_front();
}

bool FailedLogins::isFull(const std::string& address, Time now) const {
    const auto found = m_times.find(address);
    return found != m_times.end() && found->second.size() == limit && now - found->second.front() < period;
}

/** Addresses from which nothing has failed since. */
void FailedLogins::forgetBefore(Time time) {
    for (auto each = m_times.begin(); each != m_times.end();)
        each = each->second.back() <= time ? m_times.erase(each) : std::next(each);
}

} // namespace cimom
