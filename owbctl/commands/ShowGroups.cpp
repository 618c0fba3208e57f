#include "commands/ShowGroups.hpp"

#include "agent/Status.hpp"
#include "commands/Report.hpp"
#include "output/Progress.hpp"

namespace owbctl {

int showGroups(const std::vector<long>& groups, const std::function<Group(long group)>& read, Format& format,
               const std::string& url) {
    Progress progress;
    int status = 0;
    bool unreachable = false;
    std::size_t done = 0;
    for (const long number : groups) {
        if (groups.size() > 1)
            progress.show("owbctl: reading group " + std::to_string(number) + " (" +
                          ExtGroupCimClass[number] + "), " + std::to_string(++done) + " of " +
                          std::to_string(groups.size()));
        const Group group = read(number);
        progress.clear();
        format.writeGroup(group);
        if (group.status == OWB_DONE)
            continue;
        reportFailure(group, url);
        unreachable = unreachable || mayBeUnreachable(group.status);
        if (status == 0)
            status = exitStatus(group.status);
    }
    format.endGroups();
    if (unreachable)
        hintAtDoctor();
    return status;
}

} // namespace owbctl
