#include "InstanceCommand.hpp"

#include "Catalogue.hpp"
#include "Queue.hpp"
#include "ShowGroups.hpp"
#include "Usage.hpp"

#include <iostream>

namespace owbctl {
namespace {

// The library, too, ends the namespace at the first colon and the class at the first point behind it.
std::string classOf(const std::string& path) {
    const std::size_t colon = path.find(':');
    const std::string rest = colon == std::string::npos ? path : path.substr(colon + 1);
    return rest.substr(0, rest.find('.'));
}

Group readInstance(long number, std::string path, long row) {
    Queue queue;
    const long status = OWB_getInstance(number, path.data(), row, queue.head());
    return {number, ExtGroupCimClass[number], status, rowsOf(number, queue)};
}

} // namespace

std::vector<long> groupsOfPath(const std::string& path) {
    const std::string className = classOf(path);
    std::vector<long> groups = groupsOfClass(className);
    if (groups.empty())
        throw UsageError("no group has the class of the path, '" + className + "': give --group");
    return groups;
}

int showInstance(const InstanceQuery& query, Format& format, const std::string& url) {
    const auto read = [&query](long group) { return readInstance(group, query.path, query.row); };
    const int status = showGroups(query.groups, read, format, url);
    if (status != 0)
        std::cerr << "owbctl: the path may be malformed, or the object manager may not have the instance: "
                     "the library does not tell\n";
    return status;
}

} // namespace owbctl
