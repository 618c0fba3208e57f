#ifndef OWBCTL_COMMANDS_TIMECOMMAND_HPP
#define OWBCTL_COMMANDS_TIMECOMMAND_HPP

#include "agent/Conversion.hpp"
#include "formats/Format.hpp"

namespace owbctl {

/** Writes a conversion in the given format and, when there is no number, the reason on standard error.
 * Returns the exit status: 0 or exitFailed. */
int showConversion(const Conversion& conversion, Format& format);

} // namespace owbctl
#endif
