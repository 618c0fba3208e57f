#include "host/ExpansionChassis.hpp"

#include "host/Module.hpp"
#include "host/Smbios.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// DSP0134, System Enclosure or Chassis: the type of the structure, and the offsets of its fields.
const UInt8 enclosure = 3;
enum Field {
    manufacturer = 0x04,
    chassisType = 0x05,
    version = 0x06,
    serialNumber = 0x07,
    elementCount = 0x13,
    elementSize = 0x14,
    elements = 0x15
};

/** The highest bit of the type tells whether there is a lock. */
std::optional<UInt8> typeOf(const SmbiosStructure& structure) {
    const std::optional<UInt8> type = structure.byte(chassisType);
    return type ? std::optional<UInt8>(*type & 0x7F) : std::nullopt;
}

/** The number that the vendor sells it by; it is behind a list whose length the structure tells. */
std::optional<std::string> partNumber(const SmbiosStructure& structure) {
    const std::optional<UInt8> count = structure.byte(elementCount);
    const std::optional<UInt8> size = structure.byte(elementSize);
    if (!count || !size)
        return std::nullopt;
    return structure.text(elements + std::size_t{*count} * *size);
}

} // namespace

std::vector<ExpansionChassis> expansionChassis(const Host& host) {
    std::vector<ExpansionChassis> all;
    bool isFirst = true;
    UInt32 index = firstExpansionChassisIndex;
    for (const SmbiosStructure& structure : smbiosStructures(host)) {
        if (structure.type() != enclosure)
            continue;
        // No host has as many enclosures as to take the indexes of its memory.
        if (!isFirst && index < firstMemoryIndex)
            all.push_back({index++, typeOf(structure), structure.text(manufacturer), structure.text(version),
                           structure.text(serialNumber), partNumber(structure)});
        isFirst = false;
    }
    return all;
}

} // namespace cimom
