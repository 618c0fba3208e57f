#ifndef CIMOM_HOST_EXPANSION_CARDS_HPP_INCLUDED
#define CIMOM_HOST_EXPANSION_CARDS_HPP_INCLUDED
#include "host/Module.hpp"
#include "host/Smbios.hpp"

#include <vector>

namespace cimom {

/**
 * The PCI cards of a host in the order of their addresses: the devices in slots, which the firmware's table
 * or the kernel tells. Where neither knows a slot, as in most virtual machines, nothing tells cards from
 * what is on the board, and all devices count. Bridges are never cards: they connect buses.
 */
std::vector<Module> expansionCards(const Host& host, const std::vector<SmbiosStructure>& structures);

} // namespace cimom
#endif
