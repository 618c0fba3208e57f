#include "commands/InstanceCommand.hpp"

#include "agent/Items.hpp"
#include "agent/Group.hpp"
#include "arguments/Usage.hpp"
#include "commands/ShowGroups.hpp"

#include <iostream>

namespace owbctl {
namespace {

std::string behind(const std::string& text, const std::string& mark, std::size_t from = 0) {
    const std::size_t place = text.find(mark, from);
    return place == std::string::npos ? text : text.substr(place + mark.size());
}

// As the library has it: protocol://host/ in front, the namespace up to the first colon, the class up to the
// first point behind it.
std::string classOf(const std::string& path) {
    const std::size_t host = path.find("://");
    const std::string local = host == std::string::npos ? path : behind(path, "/", host + 3);
    const std::string name = behind(local, ":");
    return name.substr(0, name.find('.'));
}

} // namespace

std::vector<long> groupsOfPath(const std::string& path) {
    const std::string className = classOf(path);
    std::vector<long> groups = groupsOfClass(className);
    if (groups.empty())
        throw UsageError("no group has the class of the path, '" + className +
                         "': give --group, or a namespace in front when a value holds a colon");
    return groups;
}

int showInstance(const InstanceQuery& query, Format& format, const std::string& url) {
    const auto read = [&query](long group) {
        return readGroup(group, [&query, group](_qHead* queue) {
            std::string path = query.path; // the library's own to change
            return OWB_getInstance(group, path.data(), query.row, queue);
        });
    };
    const int status = showGroups(query.groups, read, format, url);
    if (status != 0)
        std::cerr << "owbctl: the path may be malformed, or the object manager may not have the instance: "
                     "the library does not tell\n";
    return status;
}

} // namespace owbctl
