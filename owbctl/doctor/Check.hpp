#ifndef OWBCTL_DOCTOR_CHECK_HPP
#define OWBCTL_DOCTOR_CHECK_HPP

#include <cstddef>
#include <string>

namespace owbctl {

/** One thing that was looked at: what was found, and what there is to do about it. */
struct Check {
    enum class Result { ok, warn, fail };

    Result result;
    /** What was looked at, a word or two. */
    std::string name;
    std::string finding;
    /** Empty when there is nothing to do. */
    std::string advice;
};

/** Characters of the longest name of a check. */
constexpr std::size_t longestCheckName = 9;

/** "ok", "warn" or "fail". */
const char* wordOf(Check::Result result);

} // namespace owbctl
#endif
