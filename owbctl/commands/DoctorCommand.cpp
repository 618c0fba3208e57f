#include "commands/DoctorCommand.hpp"

#include "agent/Status.hpp"
#include "doctor/Doctor.hpp"

namespace owbctl {

int showChecks(const std::string& url, const Trace& trace, Format& format) {
    bool hasFailed = false;
    examine(url, trace, [&](const Check& check) {
        format.writeCheck(check);
        hasFailed = hasFailed || check.result == Check::Result::fail;
    });
    format.endChecks();
    return hasFailed ? exitFailed : 0;
}

} // namespace owbctl
