#ifndef CIMOM_HOST_PCI_DEVICES_HPP_INCLUDED
#define CIMOM_HOST_PCI_DEVICES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

/** Where a device is on the PCI buses. The kernel writes it "domain:bus:device.function", hexadecimal. */
struct PciAddress {
    OpenWBEM::UInt32 domain;
    OpenWBEM::UInt8 bus;
    /** 0 to 31. */
    OpenWBEM::UInt8 device;
    /** 0 to 7; those of one device are on one card. */
    OpenWBEM::UInt8 function;

    bool isSameDevice(const PciAddress& other) const;
};

/** An address as the kernel writes it; without a function, that is 0. Absent for any other text. */
std::optional<PciAddress> parsePciAddress(std::string_view text);

/** A function of a PCI device. */
struct PciFunction {
    /** The address, as the kernel writes it. */
    std::string name;
    PciAddress address;
    /** Class, subclass and programming interface: 0x060400 is a bridge between PCI buses. */
    OpenWBEM::UInt32 classCode;
    OpenWBEM::UInt16 vendor;
    OpenWBEM::UInt16 device;
    /** Who made the card, as opposed to the chip; absent when the card does not tell. */
    std::optional<OpenWBEM::UInt16> subsystemVendor;
    std::optional<OpenWBEM::UInt8> revision;
    /** What the firmware calls it. */
    std::optional<std::string> label;

    bool isBridge() const { return classCode >> 16 == 6; }
};

/** The functions of /sys/bus/pci/devices in the order of their addresses. Odd entries are left out. */
std::vector<PciFunction> pciFunctions(const Host& host);

/** A slot for cards. */
struct PciSlot {
    std::string name;
    /** Of the device in it; its function does not matter. */
    PciAddress address;
};

/** The slots of /sys/bus/pci/slots in the order of their names. Odd entries are left out. */
std::vector<PciSlot> pciSlots(const Host& host);

} // namespace cimom
#endif
