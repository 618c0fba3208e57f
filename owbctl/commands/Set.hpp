#ifndef OWBCTL_COMMANDS_SET_HPP
#define OWBCTL_COMMANDS_SET_HPP

#include "agent/Change.hpp"
#include "formats/Format.hpp"

#include <string>

namespace owbctl {

/**
 * The command set: writes values with agent::writeRow() and the changes in the given format. Reports on
 * standard error a step that failed, a row that does not appear, rejected values, properties that hold an
 * empty text now, and properties that lost their value. Returns the exit status: that of the library if a
 * step failed; exitFailed if the row does not appear, the write failed or a value was rejected; else 0.
 *
 * @param trace as for agent::writeRow()
 */
int setRow(const agent::WriteRequest& request, Format& format, const agent::Trace* trace);

} // namespace owbctl
#endif
