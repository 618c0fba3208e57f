#ifndef OWBCTL_GETCOMMAND_HPP
#define OWBCTL_GETCOMMAND_HPP

#include "Format.hpp"

#include <string>
#include <vector>

namespace owbctl {

/**
 * Reads each group, writes it in the given format and reports failed reads on standard error, where they name
 * `url`. All groups are tried. Returns the exit status: that of the first failed read, else 0.
 */
int getGroups(const std::vector<long>& groups, Format& format, const std::string& url);

} // namespace owbctl
#endif
