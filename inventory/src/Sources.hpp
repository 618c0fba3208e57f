#ifndef INVENTORY_SOURCES_HPP
#define INVENTORY_SOURCES_HPP
/* Where the inventory comes from. The library never changes these and does not export them; programs that are
 * linked with its objects may point them elsewhere. */

namespace inventory {

/* The folder of the processes, proc(5), without a slash at its end. */
extern const char* procFolder;

/* The program that knows the installed software. */
extern const char* softwareInventory;

} // namespace inventory

#endif
