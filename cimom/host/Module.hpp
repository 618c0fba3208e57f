#ifndef CIMOM_HOST_MODULE_HPP_INCLUDED
#define CIMOM_HOST_MODULE_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

// What a host is built of has one numbering, as entPhysicalIndex of RFC 4133: the host's chassis, then its
// other enclosures, the sockets for memory, the cards. A number belongs to the place of a part, so that it
// does not change when other parts come and go.
const OpenWBEM::UInt32 chassisIndex = 1;
const OpenWBEM::UInt32 firstExpansionChassisIndex = 2;
const OpenWBEM::UInt32 firstMemoryIndex = 0x100;
/** From here on 0x10000 for each PCI domain. */
const OpenWBEM::UInt32 firstCardIndex = 0x10000;

/** A part of the host that can be there or not: a memory module or an expansion card. */
struct Module {
    OpenWBEM::UInt32 index;
    /** Identifies it among the other modules, by the place that it is in. */
    std::string deviceID;
    /** That place, in words of the firmware where it has some; that of no other module. */
    std::string location;
    /** "memory module" or "expansion card". */
    const char* kind;
    /** What its vendor calls it. */
    std::optional<std::string> equipmentType;
    std::optional<std::string> version;
    std::optional<std::string> serialNumber;
    std::optional<std::string> manufacturer;
    std::optional<std::string> partNumber;
    /** Whether it can be replaced, which soldered parts cannot. */
    std::optional<bool> isReplaceable;
};

/** All modules of a host in the order of their indexes. Without the firmware's table there is no memory. */
std::vector<Module> modules(const Host& host);

} // namespace cimom
#endif
