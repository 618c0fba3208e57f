#include "commands/DoctorCommand.hpp"

#include "agent/Status.hpp"
#include "doctor/Doctor.hpp"

#include <algorithm>

namespace owbctl {

int showChecks(const std::string& url, const Trace& trace, Format& format) {
    const std::vector<Check> checks = examine(url, trace);
    format.writeChecks(checks);
    const bool failed = std::any_of(checks.begin(), checks.end(),
                                    [](const Check& check) { return check.result == Check::Result::fail; });
    return failed ? exitFailed : 0;
}

} // namespace owbctl
