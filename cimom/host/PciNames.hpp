#ifndef CIMOM_HOST_PCI_NAMES_HPP_INCLUDED
#define CIMOM_HOST_PCI_NAMES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <string>

namespace cimom {

/**
 * Names for the numbers of PCI vendors and devices, as the list pci.ids tells them where the host has one.
 * For what it does not name the number itself is told, as lspci(8) does.
 */
class PciNames {
public:
    explicit PciNames(const Host& host);

    /** "Acme Corporation", or "1af4". */
    std::string vendor(OpenWBEM::UInt16 vendor) const;
    /** "Network Adapter 9000", or "1af4:1041". */
    std::string device(OpenWBEM::UInt16 vendor, OpenWBEM::UInt16 device) const;

private:
    std::string m_list; // begins with a line end, so that each line has one before it
};

} // namespace cimom
#endif
