#include "doctor/Check.hpp"

namespace owbctl {

const char* wordOf(Check::Result result) {
    if (result == Check::Result::ok)
        return "ok";
    return result == Check::Result::warn ? "warn" : "fail";
}

} // namespace owbctl
