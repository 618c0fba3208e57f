#ifndef OWBCTL_ARGUMENTS_ASSIGNMENT_HPP
#define OWBCTL_ARGUMENTS_ASSIGNMENT_HPP

#include "agent/Change.hpp"

#include <string>
#include <vector>

namespace owbctl {

/**
 * The assignments that texts of the form NAME=VALUE ask for, in their order. NAME is a property of `group` in
 * any case of letters, or a nominator; VALUE is all that follows the first "=" and may be empty. Throws
 * UsageError for a text without "=", a property that the group does not have, and one that is
 * named twice.
 */
std::vector<Assignment> parseAssignments(long group, const std::vector<std::string>& texts);

} // namespace owbctl
#endif
