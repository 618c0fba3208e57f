#ifndef OWBCTL_COMMANDS_DOCTORCOMMAND_HPP
#define OWBCTL_COMMANDS_DOCTORCOMMAND_HPP

#include "agent/Trace.hpp"
#include "formats/Format.hpp"

#include <string>

namespace owbctl {

/** Writes what examine() finds. Returns the exit status: exitFailed when a check failed, else 0. */
int showChecks(const std::string& url, const Trace& trace, Format& format);

} // namespace owbctl
#endif
