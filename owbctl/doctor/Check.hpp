#ifndef OWBCTL_DOCTOR_CHECK_HPP
#define OWBCTL_DOCTOR_CHECK_HPP

#include <cstddef>
#include <string>
#include <sys/types.h>

namespace owbctl {

/** One check of the command doctor. */
struct Check {
    enum class Result { ok, warn, fail };

    Result result;
    /** Subject of the check, one or two words. */
    std::string name;
    std::string finding;
    /** What to do about the finding; empty if there is nothing to do. */
    std::string advice;
};

/** Length of the longest name of a check. */
constexpr std::size_t longestCheckName = 9;

/** "ok", "warn" or "fail". */
const char* wordOf(Check::Result result);

/** Name of a user, or "user 1234" if it has none. */
std::string userName(uid_t user);

} // namespace owbctl
#endif
