#include "arguments/Names.hpp"

#include "arguments/Suggestion.hpp"

#include <algorithm>

namespace owbctl {

using namespace agent;

namespace {

std::string after(const std::string& text, const std::string& mark, std::size_t from = 0) {
    const std::size_t found = text.find(mark, from);
    return found == std::string::npos ? text : text.substr(found + mark.size());
}

// As the library parses a path: protocol://host/ first, the namespace up to the first colon, the class up to
// the first point after it.
std::string classOfPath(const std::string& path) {
    const std::size_t host = path.find("://");
    const std::string local = host == std::string::npos ? path : after(path, "/", host + 3);
    const std::string name = after(local, ":");
    return name.substr(0, name.find('.'));
}

Assignment parseAssignment(long group, const std::string& argument) {
    const std::size_t mark = argument.find('=');
    if (mark == std::string::npos)
        throw UsageError("'" + argument + "' does not have the form NAME=VALUE");
    const std::string name = argument.substr(0, mark);
    const Attribute* const attribute = findAttribute(group, name);
    if (attribute == nullptr)
        throw UsageError("group " + std::to_string(group) + " (" + classOf(group).name +
                         ") has no property '" + name + "'" + propertySuggestion(name, {group}));
    return {attribute, argument.substr(mark + 1)};
}

} // namespace

std::vector<long> groupsOfPath(const std::string& path) {
    const std::string className = classOfPath(path);
    std::vector<long> groups = groupsOfClass(className);
    if (groups.empty())
        throw UsageError("no group has the class of the path, '" + className +
                         "': give --group, or a namespace if a value holds a colon");
    return groups;
}

std::vector<Assignment> parseAssignments(long group, const std::vector<std::string>& arguments) {
    std::vector<Assignment> assignments;
    for (const std::string& argument : arguments) {
        const Assignment next = parseAssignment(group, argument);
        const bool isRepeated =
            std::any_of(assignments.begin(), assignments.end(),
                        [&next](const Assignment& earlier) { return earlier.attribute == next.attribute; });
        if (isRepeated)
            throw UsageError(std::string(next.attribute->property) + " is given twice");
        assignments.push_back(next);
    }
    return assignments;
}

} // namespace owbctl
