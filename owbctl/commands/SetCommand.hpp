#ifndef OWBCTL_COMMANDS_SETCOMMAND_HPP
#define OWBCTL_COMMANDS_SETCOMMAND_HPP

#include "agent/Change.hpp"
#include "formats/Format.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** Values for one row of a group. */
struct WriteRequest {
    long group;
    /** Number of the row, as readGroup() counts. */
    long row;
    std::vector<Assignment> assignments;
};

/**
 * Writes the values, having read the group, and reads it again, since the library does not say whether the
 * object manager took them. Writes what changed in the given format. Reports on standard error each step that
 * failed, a row that does not appear, values that were not taken, and properties that lost theirs. Returns
 * the exit status: that of the library when a step failed, exitFailed when the row does not appear or a value
 * was not taken, else 0.
 */
int setRow(const WriteRequest& request, Format& format, const std::string& url);

} // namespace owbctl
#endif
