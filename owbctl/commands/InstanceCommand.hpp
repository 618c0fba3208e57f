#ifndef OWBCTL_COMMANDS_INSTANCECOMMAND_HPP
#define OWBCTL_COMMANDS_INSTANCECOMMAND_HPP

#include "formats/Format.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** Which instance to show, and how. */
struct InstanceQuery {
    /** Object path as OWB_getInstance() takes it: [namespace:]Class.Key="value". */
    std::string path;
    /** Each reads the instance as one of its own. */
    std::vector<long> groups;
    /** Row number that the instance is shown with, not negative. */
    long row;
};

/** The groups of the class that an object path names. Throws UsageError when no group has this class. */
std::vector<long> groupsOfPath(const std::string& path);

/** Reads and writes one instance as showGroups() does, and says in case of failure that the fault may be in
 * the path. Returns the exit status. */
int showInstance(const InstanceQuery& query, Format& format, const std::string& url);

} // namespace owbctl
#endif
