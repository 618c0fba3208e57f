#ifndef OWBCTL_TIMECOMMAND_HPP
#define OWBCTL_TIMECOMMAND_HPP

#include "Conversion.hpp"
#include "Format.hpp"

namespace owbctl {

/** Writes a conversion in the given format and, when there is no number, the reason on standard error.
 * Returns the exit status: 0 or exitFailed. */
int showConversion(const Conversion& conversion, Format& format);

} // namespace owbctl
#endif
