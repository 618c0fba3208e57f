#ifndef CIMOM_HOST_SMBIOS_HPP_INCLUDED
#define CIMOM_HOST_SMBIOS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/Host.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

/**
 * A structure of the SMBIOS table, in which the firmware describes the hardware (DSP0134). Fields are found
 * by their offsets in DSP0134. A field beyond the end of the structure is absent.
 */
class SmbiosStructure {
public:
    /**
     * @param fields the formatted area with its header, at least 4 bytes
     * @param texts the texts after it, in order
     */
    SmbiosStructure(std::string_view fields, std::vector<std::string> texts);

    /** 3 is an enclosure, 9 a slot, 17 a memory device. */
    OpenWBEM::UInt8 type() const;

    std::optional<OpenWBEM::UInt8> byte(std::size_t offset) const;
    std::optional<OpenWBEM::UInt16> word(std::size_t offset) const;
    /**
     * The text whose number is at an offset, without blanks around it; absent if empty. Dots replace bytes
     * that are not printable ASCII characters.
     */
    std::optional<std::string> text(std::size_t offset) const;

private:
    std::string m_fields;
    std::vector<std::string> m_texts;
};

/**
 * The structures of a table up to the end marker (type 127) or the first malformed or truncated one: it is
 * unknown where the next one begins.
 */
std::vector<SmbiosStructure> parseSmbiosTable(std::string_view table);

/**
 * The table of a host, /sys/firmware/dmi/tables/DMI. Only root can read it. Empty if it cannot be read.
 */
std::vector<SmbiosStructure> smbiosStructures(const Host& host);

} // namespace cimom
#endif
