#include "commands/GetCommand.hpp"

#include "agent/Items.hpp"
#include "agent/Status.hpp"
#include "arguments/Usage.hpp"
#include "commands/ShowGroups.hpp"

#include <algorithm>
#include <iostream>

namespace owbctl {
namespace {

void checkProperties(const GroupQuery& query) {
    for (const std::string& name : query.properties) {
        const bool isKnown = std::any_of(query.groups.begin(), query.groups.end(), [&name](long group) {
            return findProperty(group, name) != nullptr;
        });
        if (!isKnown)
            throw UsageError("none of the groups has a property '" + name + "'; see 'owbctl groups'");
    }
}

bool isAskedFor(const ExtItem* description, const GroupQuery& query) {
    return query.properties.empty() ||
           std::any_of(query.properties.begin(), query.properties.end(),
                       [description](const std::string& name) {
                           return findProperty(description->group, name) == description;
                       });
}

/** Leaves the rows and properties that were asked for; a row without any goes. */
void select(Group& group, const GroupQuery& query) {
    const auto isOther = [&query](const Property& property) {
        return !isAskedFor(property.description, query);
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
    std::cerr << "owbctl: row " << *query.row << ": there is no such row, or it has no value\n";
    return exitFailed;
}

} // namespace owbctl
