#ifndef OPENWBEM_CLIENT_TRACE_HPP_INCLUDED
#define OPENWBEM_CLIENT_TRACE_HPP_INCLUDED
#include <string>

namespace OpenWBEM {

/**
 * Writes a line to the trace of the bridge, OWB_Debug() of owb.h, if the process has loaded the bridge and
 * its trace is on. This library has no log of its own.
 */
void trace(const char* file, const char* function, unsigned long line, const std::string& message);

} // namespace OpenWBEM
#endif
