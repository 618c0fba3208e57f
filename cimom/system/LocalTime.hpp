#ifndef CIMOM_SYSTEM_LOCAL_TIME_HPP_INCLUDED
#define CIMOM_SYSTEM_LOCAL_TIME_HPP_INCLUDED
#include "OW_CIMDateTime.hpp"

#include <ctime>

namespace cimom {

/** A moment as a CIM date: local time of this process's time zone, its offset from UTC, microseconds. */
OpenWBEM::CIMDateTime localTime(const std::timespec& moment);

} // namespace cimom
#endif
