#ifndef CIMOM_HOST_PCI_HPP_INCLUDED
#define CIMOM_HOST_PCI_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

/** The address of a function of a PCI device. The kernel writes it "domain:bus:device.function", hexadecimal.
 */
struct PciAddress {
    OpenWBEM::UInt32 domain;
    OpenWBEM::UInt8 bus;
    /** 0 to 31. */
    OpenWBEM::UInt8 device;
    /** 0 to 7. All functions of a device are on the same card. */
    OpenWBEM::UInt8 function;

    bool isSameDevice(const PciAddress& other) const;
};

/** Reads an address as the kernel writes it; a missing function is 0. Absent for any other text. */
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
    /** Vendor of the card, not of the chip; absent if the card does not report it. */
    std::optional<OpenWBEM::UInt16> subsystemVendor;
    std::optional<OpenWBEM::UInt8> revision;
    /** The name that the firmware gives it. */
    std::optional<std::string> label;

    bool isBridge() const { return classCode >> 16 == 6; }
};

/** The functions of /sys/bus/pci/devices sorted by address. Malformed entries are skipped. */
std::vector<PciFunction> pciFunctions(const Host& host);

/** A slot for cards. */
struct PciSlot {
    std::string name;
    /** Address of the device in it, for any function. */
    PciAddress address;
};

/** The slots of /sys/bus/pci/slots sorted by name. Malformed entries are skipped. */
std::vector<PciSlot> pciSlots(const Host& host);

/**
 * The names of PCI vendors and devices in the list pci.ids of the host. Numbers replace missing
 * names, as in lspci(8).
 */
class PciNames {
public:
    explicit PciNames(const Host& host);

    /** "Acme Corporation", or "1af4". */
    std::string vendor(OpenWBEM::UInt16 vendor) const;
    /** "Network Adapter 9000", or "1af4:1041". */
    std::string device(OpenWBEM::UInt16 vendor, OpenWBEM::UInt16 device) const;

private:
    std::string m_list; // begins with a line end, so that one precedes each line
};

} // namespace cimom
#endif
