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
 * A structure of the firmware's table of the hardware (SMBIOS, DSP0134). Its fields are found by the
 * offsets that DSP0134 lists; one that lies behind the end of the structure, as those of later versions do,
 * is absent.
 */
class SmbiosStructure {
public:
    /**
     * @param fields the formatted area with its header, at least 4 bytes
     * @param texts the texts behind it, in their order
     */
    SmbiosStructure(std::string_view fields, std::vector<std::string> texts);

    /** What the structure describes: 3 an enclosure, 9 a slot, 17 a memory device... */
    OpenWBEM::UInt8 type() const;

    std::optional<OpenWBEM::UInt8> byte(std::size_t offset) const;
    std::optional<OpenWBEM::UInt16> word(std::size_t offset) const;
    /**
     * The text whose number is at an offset, without the blanks around it; absent when empty. Bytes that
     * are no printable ASCII characters are shown as dots.
     */
    std::optional<std::string> text(std::size_t offset) const;

private:
    std::string m_fields;
    std::vector<std::string> m_texts;
};

/**
 * The structures of a table, up to the one that ends it (type 127), or up to the first that is malformed or
 * cut short: where the next one would begin is not known then.
 */
std::vector<SmbiosStructure> parseSmbiosTable(std::string_view table);

/**
 * The table of a host: /sys/firmware/dmi/tables/DMI, which the kernel has cut to the length that the
 * firmware tells, and which root alone may read. Empty where there is none.
 */
std::vector<SmbiosStructure> smbiosStructures(const Host& host);

} // namespace cimom
#endif
