#include "arguments/Assignment.hpp"

#include "agent/Items.hpp"
#include "arguments/Usage.hpp"

#include <algorithm>

namespace owbctl {
namespace {

Assignment parseAssignment(long group, const std::string& text) {
    const std::size_t mark = text.find('=');
    if (mark == std::string::npos)
        throw UsageError("'" + text + "' is not of the form NAME=VALUE");
    const std::string name = text.substr(0, mark);
    const ExtItem* const description = findProperty(group, name);
    if (description == nullptr)
        throw UsageError("group " + std::to_string(group) + " (" + ExtGroupCimClass[group] +
                         ") has no property '" + name + "'; see 'owbctl groups'");
    return {description, text.substr(mark + 1)};
}

} // namespace

std::vector<Assignment> parseAssignments(long group, const std::vector<std::string>& texts) {
    std::vector<Assignment> assignments;
    for (const std::string& text : texts) {
        const Assignment next = parseAssignment(group, text);
        const bool isRepeated =
            std::any_of(assignments.begin(), assignments.end(), [&next](const Assignment& earlier) {
                return earlier.description == next.description;
            });
        if (isRepeated)
            throw UsageError(std::string(next.description->property) + " is given twice");
        assignments.push_back(next);
    }
    return assignments;
}

} // namespace owbctl
