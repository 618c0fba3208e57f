#include "ShowGroups.hpp"

#include "Hint.hpp"
#include "Status.hpp"
#include "Text.hpp"

#include <iostream>

namespace owbctl {
namespace {

void report(const Group& group, const std::string& url) {
    std::cerr << "owbctl: group " << group.number << " (" << group.className
              << "): " << printable(failureText(group.status, url)) << " (status " << group.status << ")\n";
}

} // namespace

int showGroups(const std::vector<long>& groups, const std::function<Group(long group)>& read, Format& format,
               const std::string& url) {
    int status = 0;
    bool unreachable = false;
    for (const long number : groups) {
        const Group group = read(number);
        format.writeGroup(group);
        if (group.status == OWB_DONE)
            continue;
        report(group, url);
        unreachable = unreachable || mayBeUnreachable(group.status);
        if (status == 0)
            status = exitStatus(group.status);
    }
    format.endGroups();
    if (unreachable)
        hintAtConnection();
    return status;
}

} // namespace owbctl
