#ifndef CIMOM_HOST_EXPANSION_CHASSIS_HPP_INCLUDED
#define CIMOM_HOST_EXPANSION_CHASSIS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** An enclosure that belongs to a host beside its chassis, such as a box for further cards or disks. */
struct ExpansionChassis {
    /** In the numbering of Module.hpp. */
    OpenWBEM::UInt32 index;
    /** DSP0134, System Enclosure or Chassis Types: 18 is an expansion chassis. */
    std::optional<OpenWBEM::UInt8> type;
    std::optional<std::string> manufacturer;
    std::optional<std::string> version;
    std::optional<std::string> serialNumber;
    std::optional<std::string> partNumber;
};

/** The enclosures of the firmware's table behind the first, which is that of the host itself. */
std::vector<ExpansionChassis> expansionChassis(const Host& host);

} // namespace cimom
#endif
