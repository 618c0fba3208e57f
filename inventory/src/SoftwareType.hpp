#ifndef INVENTORY_SOFTWARE_TYPE_HPP
#define INVENTORY_SOFTWARE_TYPE_HPP
#include <OW_String.hpp>

namespace inventory {

/*
 * Run type of a program by its command name, from the output of the software inventory.
 * QAV_UnixProcessAPI::determineSWType() documents the rules.
 *
 *   lines   the lines of the output, ended by a null pointer; null if the program printed nothing
 */
unsigned short softwareType(const char* const* lines, const OpenWBEM::String& name);

} // namespace inventory

#endif
