#include "commands/Read.hpp"

#include "arguments/Names.hpp"
#include "commands/Report.hpp"
#include "output/Deadline.hpp"
#include "output/Output.hpp"

#include <algorithm>
#include <functional>
#include <iostream>

namespace owbctl {

using namespace agent;

namespace {

std::string countText(std::size_t done, std::size_t all) {
    return all == 1 ? "" : ", " + std::to_string(done) + " of " + std::to_string(all);
}

/** Reads a group with a limit for the wait. */
Group readWaiting(const std::function<Group(long group)>& read, long number) {
    const Waiting waiting(number);
    return read(number);
}

int showGroups(const std::vector<long>& groups, const std::function<Group(long group)>& read,
               Format& format) {
    Progress progress;
    int status = 0;
    bool isUnreachable = false;
    std::size_t done = 0;
    for (const long number : groups) {
        progress.show("owbctl: reading group " + std::to_string(number) + " (" + classOf(number).name + ")" +
                      countText(++done, groups.size()));
        const Group group = readWaiting(read, number);
        progress.clear();
        format.writeGroup(group);
        if (group.status == OWB_DONE)
            continue;
        reportFailure(group);
        isUnreachable = isUnreachable || group.failure.isOfConnection;
        if (status == 0)
            status = exitStatus(group.status);
    }
    format.endGroups();
    if (isUnreachable)
        hintAtDoctor();
    return status;
}

} // namespace

int getGroups(const GroupQuery& query, Format& format) {
    checkSelection(query.selection, query.groups);
    std::vector<long> missing = query.selection.rows;
    const int status = showGroups(
        query.groups,
        [&query, &missing](long number) {
            Group group = readGroup(number);
            const auto isThere = [&](long row) { return hasRow(group, row, query.selection); };
            missing.erase(std::remove_if(missing.begin(), missing.end(), isThere), missing.end());
            select(group, query.selection);
            return group;
        },
        format);
    if (status != 0 || missing.empty())
        return status;
    for (const long row : missing)
        std::cerr << "owbctl: row " << row << ": no such row, or it has no value\n";
    return exitFailed;
}

int showInstance(const InstanceQuery& query, Format& format) {
    return showGroups(
        query.groups, [&query](long group) { return readInstance(group, query.path, query.row); }, format);
}

} // namespace owbctl
