#ifndef CIMOM_HOST_MODULES_HPP_INCLUDED
#define CIMOM_HOST_MODULES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

// The indexes of all physical parts, as entPhysicalIndex of RFC 4133: the chassis, other enclosures, memory
// sockets, cards. An index belongs to a socket or slot: it does not change when other parts come and go.
const OpenWBEM::UInt32 chassisIndex = 1;
const OpenWBEM::UInt32 firstExpansionChassisIndex = 2;
const OpenWBEM::UInt32 firstMemoryIndex = 0x100;
/** Each PCI domain has 0x10000 indexes. */
const OpenWBEM::UInt32 firstCardIndex = 0x10000;

/** A memory module or an expansion card. */
struct Module {
    OpenWBEM::UInt32 index;
    /** Identifies the module by its socket or slot. */
    std::string deviceID;
    /** The name of the socket or slot, from the firmware if it has one. Unique. */
    std::string location;
    /** "memory module" or "expansion card". */
    const char* kind;
    /** The name that its vendor gives it. */
    std::optional<std::string> equipmentType;
    std::optional<std::string> version;
    std::optional<std::string> serialNumber;
    std::optional<std::string> manufacturer;
    std::optional<std::string> partNumber;
    /** False for soldered parts. */
    std::optional<bool> isReplaceable;
};

/**
 * All modules, sorted by index. Memory modules are those in the SMBIOS table; empty sockets are skipped.
 * Cards are the PCI devices in slots that the SMBIOS table or the kernel reports. If neither reports a slot,
 * as in most virtual machines, all PCI devices are cards. Bridges, which connect buses, never are.
 */
std::vector<Module> modules(const Host& host);

/** A further enclosure of a host, such as a box for cards or disks. */
struct ExpansionChassis {
    OpenWBEM::UInt32 index;
    /** DSP0134, System Enclosure or Chassis Types: 18 is an expansion chassis. */
    std::optional<OpenWBEM::UInt8> type;
    std::optional<std::string> manufacturer;
    std::optional<std::string> version;
    std::optional<std::string> serialNumber;
    std::optional<std::string> partNumber;
};

/** The enclosures in the SMBIOS table except the first, which is the chassis. */
std::vector<ExpansionChassis> expansionChassis(const Host& host);

} // namespace cimom
#endif
