#ifndef TESTS_CIMOM_SMBIOS_TABLE_HPP
#define TESTS_CIMOM_SMBIOS_TABLE_HPP
#include "HostTree.hpp"

#include <cstddef>
#include <string>

/** Builds a structure of an SMBIOS table (DSP0134) field by field. */
class SmbiosBytes {
public:
    /** A structure of a type. Its header of 4 bytes and its fields, all 0, have `length` bytes. */
    SmbiosBytes(unsigned type, std::size_t length)
        : m_fields(length, '\0') {
        byte(0, type);
        byte(1, static_cast<unsigned>(length));
    }

    SmbiosBytes& byte(std::size_t offset, unsigned value) {
        m_fields.at(offset) = static_cast<char>(value);
        return *this;
    }
    SmbiosBytes& word(std::size_t offset, unsigned value) {
        return byte(offset, value & 0xFF).byte(offset + 1, value >> 8);
    }
    /** Appends a text and writes its number at an offset. */
    SmbiosBytes& text(std::size_t offset, const std::string& value) {
        m_texts += value + '\0';
        return byte(offset, ++m_textCount);
    }
    operator std::string() const {
        return m_fields + (m_texts.empty() ? std::string(1, '\0') : m_texts) + '\0';
    }

private:
    std::string m_fields;
    std::string m_texts;
    unsigned m_textCount = 0;
};

/** Writes a table and its end marker. */
inline void writeSmbiosTable(const HostTree& tree, const std::string& structures) {
    tree.write("/sys/firmware/dmi/tables/DMI", structures + std::string(SmbiosBytes(127, 4)));
}

#endif
