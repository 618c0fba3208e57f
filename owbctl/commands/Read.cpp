#include "commands/Read.hpp"

#include "agent/Endpoint.hpp"
#include "arguments/Names.hpp"
#include "commands/Report.hpp"
#include "output/Output.hpp"

#include <algorithm>
#include <functional>
#include <iostream>

namespace owbctl {

using namespace agent;

namespace {

int showGroups(const std::vector<long>& groups, const std::function<Group(long group)>& read, Format& format,
               const std::string& url) {
    Progress progress;
    int status = 0;
    bool isUnreachable = false;
    std::size_t done = 0;
    for (const long number : groups) {
        if (groups.size() > 1)
            progress.show("owbctl: reading group " + std::to_string(number) + " (" + classOf(number).name +
                          "), " + std::to_string(++done) + " of " + std::to_string(groups.size()));
        const Group group = read(number);
        progress.clear();
        format.writeGroup(group);
        if (group.status == OWB_DONE)
            continue;
        reportFailure(group, url);
        isUnreachable = isUnreachable || isConnectionFailure(group.status);
        if (status == 0)
            status = exitStatus(group.status);
    }
    format.endGroups();
    if (isUnreachable)
        hintAtDoctor();
    return status;
}

void checkProperties(const GroupQuery& query) {
    for (const std::string& name : query.properties) {
        const bool isKnown = std::any_of(query.groups.begin(), query.groups.end(), [&name](long group) {
            return findAttribute(group, name) != nullptr;
        });
        if (!isKnown)
            throw UsageError("none of the groups has a property '" + name + "'; see 'owbctl groups'");
    }
}

bool isSelected(const Attribute* attribute, const GroupQuery& query) {
    return query.properties.empty() ||
           std::any_of(query.properties.begin(), query.properties.end(),
                       [attribute](const std::string& name) {
                           return findAttribute(attribute->group, name) == attribute;
                       });
}

/** Removes the rows and properties that are not selected, and rows that become empty. */
void select(Group& group, const GroupQuery& query) {
    const auto isOther = [&query](const Property& property) {
        return !isSelected(property.attribute, query);
    };
    for (Row& row : group.rows)
        row.properties.erase(std::remove_if(row.properties.begin(), row.properties.end(), isOther),
                             row.properties.end());
    const auto isUnwanted = [&query](const Row& row) {
        return row.properties.empty() || row.number != query.row.value_or(row.number);
    };
    group.rows.erase(std::remove_if(group.rows.begin(), group.rows.end(), isUnwanted), group.rows.end());
}

} // namespace

int getGroups(const GroupQuery& query, Format& format, const std::string& url) {
    checkProperties(query);
    bool hasRow = false;
    const int status = showGroups(
        query.groups,
        [&query, &hasRow](long number) {
            Group group = readGroup(number);
            select(group, query);
            hasRow = hasRow || !group.rows.empty();
            return group;
        },
        format, url);
    if (status != 0 || !query.row || hasRow)
        return status;
    std::cerr << "owbctl: row " << *query.row << ": no such row, or it has no value\n";
    return exitFailed;
}

int showInstance(const InstanceQuery& query, Format& format, const std::string& url) {
    const auto read = [&query](long group) {
        return readGroup(group, [&query, group](_qHead* queue) {
            std::string path = query.path; // the library takes char*
            return OWB_getInstance(group, path.data(), query.row, queue);
        });
    };
    const int status = showGroups(query.groups, read, format, url);
    if (status != 0)
        std::cerr << "owbctl: the path may be malformed, or the object manager may not have the instance: "
                     "the library does not report which\n";
    return status;
}

} // namespace owbctl
