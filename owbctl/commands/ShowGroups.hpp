#ifndef OWBCTL_COMMANDS_SHOWGROUPS_HPP
#define OWBCTL_COMMANDS_SHOWGROUPS_HPP

#include "formats/Format.hpp"

#include <functional>
#include <string>
#include <vector>

namespace owbctl {

/**
 * Reads each group with `read`, writes it in the given format and reports failed reads on standard error,
 * where they name `url`. All groups are tried. Returns the exit status: that of the first failed read, else
 * 0.
 */
int showGroups(const std::vector<long>& groups, const std::function<Group(long group)>& read, Format& format,
               const std::string& url);

} // namespace owbctl
#endif
