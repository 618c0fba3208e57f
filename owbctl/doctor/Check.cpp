#include "doctor/Check.hpp"

#include <pwd.h>

namespace owbctl {

const char* wordOf(Check::Result result) {
    if (result == Check::Result::ok)
        return "ok";
    return result == Check::Result::warn ? "warn" : "fail";
}

std::string userName(uid_t user) {
    const passwd* const entry = ::getpwuid(user);
    return entry == nullptr ? "user " + std::to_string(user) : entry->pw_name;
}

} // namespace owbctl
