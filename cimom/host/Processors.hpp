#ifndef CIMOM_HOST_PROCESSORS_HPP_INCLUDED
#define CIMOM_HOST_PROCESSORS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** A processor as the scheduler sees it: a core, or a thread of one. */
struct Processor {
    /** The kernel's number, from 0. */
    OpenWBEM::UInt32 number;
    /** Whether it runs programs; absent when the kernel does not tell. */
    std::optional<bool> isOnline;
    /** "model name" of /proc/cpuinfo, which does not tell it of processors that are not online. */
    std::optional<std::string> model;
};

/**
 * The processors in the order of their numbers: those of /proc/cpuinfo, which are online, and those that
 * only /sys/devices/system/cpu has.
 */
std::vector<Processor> processors(const Host& host);

} // namespace cimom
#endif
