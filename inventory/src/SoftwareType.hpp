#ifndef INVENTORY_SOFTWARE_TYPE_HPP
#define INVENTORY_SOFTWARE_TYPE_HPP
#include <OW_String.hpp>

namespace inventory {

/*
 * Run type of a program by its command name, as QAV_UnixProcessAPI::determineSWType() finds it in the output
 * of the software inventory.
 *
 * lines   The output, as runcommand() returns it: up to a null pointer. A null pointer instead of the array:
 *         the program printed nothing.
 */
unsigned short softwareType(const char* const* lines, const OpenWBEM::String& name);

} // namespace inventory

#endif
