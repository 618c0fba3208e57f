#include "GetCommand.hpp"

#include "Status.hpp"
#include "Text.hpp"

#include <iostream>

namespace owbctl {
namespace {

void report(const Group& group, const std::string& url) {
    std::cerr << "owbctl: group " << group.number << " (" << group.className
              << "): " << printable(failureText(group.status, url)) << " (status " << group.status << ")\n";
}

void hint() {
    std::cerr << "owbctl: is owbcimomd running, and does --url name its socket?\n"
                 "        For the cause: echo /tmp/owb.log >vdxDebug, run this again, read /tmp/owb.log\n";
}

} // namespace

int getGroups(const std::vector<long>& groups, Format& format, const std::string& url) {
    int status = 0;
    bool unreachable = false;
    for (const long number : groups) {
        const Group group = readGroup(number);
        format.writeGroup(group);
        if (group.status == OWB_DONE)
            continue;
        report(group, url);
        unreachable = unreachable || group.status == OWB_NO_CONNECTION || group.status == OWB_EXCEPTION;
        if (status == 0)
            status = exitStatus(group.status);
    }
    format.endGroups();
    if (unreachable)
        hint();
    return status;
}

} // namespace owbctl
