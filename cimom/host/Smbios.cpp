#include "host/Smbios.hpp"

#include "util/Ascii.hpp"

#include <algorithm>

namespace cimom {

using namespace OpenWBEM;

namespace {

const std::size_t headerSize = 4; // type, length of the formatted area, handle of 2 bytes
const UInt8 endOfTable = 127;

UInt8 byteAt(std::string_view bytes, std::size_t offset) {
    return static_cast<UInt8>(bytes[offset]);
}

/** Removes the texts after a formatted area from a table and returns them; absent if they do not end. */
std::optional<std::vector<std::string>> takeTexts(std::string_view& table) {
    const std::string_view twoZeros("\0\0", 2);
    const std::size_t end = table.find(twoZeros);
    if (end == std::string_view::npos)
        return std::nullopt;
    std::string_view all = table.substr(0, end);
    table.remove_prefix(end + twoZeros.size());
    std::vector<std::string> texts;
    while (!all.empty()) {
        const std::size_t length = std::min(all.find('\0'), all.size());
        texts.emplace_back(all.substr(0, length));
        all.remove_prefix(std::min(length + 1, all.size()));
    }
    return texts;
}

/** Removes the first structure of a table and returns it; absent if it is malformed or truncated. */
std::optional<SmbiosStructure> takeStructure(std::string_view& table) {
    if (table.size() < headerSize)
        return std::nullopt;
    const std::size_t length = byteAt(table, 1);
    if (length < headerSize || length > table.size())
        return std::nullopt;
    const std::string_view fields = table.substr(0, length);
    table.remove_prefix(length);
    std::optional<std::vector<std::string>> texts = takeTexts(table);
    return texts ? std::optional<SmbiosStructure>(SmbiosStructure(fields, std::move(*texts))) : std::nullopt;
}

} // namespace

SmbiosStructure::SmbiosStructure(std::string_view fields, std::vector<std::string> texts)
    : m_fields(fields)
    , m_texts(std::move(texts)) {}

UInt8 SmbiosStructure::type() const {
    return byteAt(m_fields, 0);
}

std::optional<UInt8> SmbiosStructure::byte(std::size_t offset) const {
    return offset < m_fields.size() ? std::optional<UInt8>(byteAt(m_fields, offset)) : std::nullopt;
}

std::optional<UInt16> SmbiosStructure::word(std::size_t offset) const {
    const std::optional<UInt8> low = byte(offset);
    const std::optional<UInt8> high = byte(offset + 1);
    if (!low || !high)
        return std::nullopt;
    return static_cast<UInt16>(*low + *high * 256);
}

std::optional<std::string> SmbiosStructure::text(std::size_t offset) const {
    const std::size_t which = byte(offset).value_or(0); // from 1; 0 is none
    if (which == 0 || which > m_texts.size())
        return std::nullopt;
    std::string text(ascii::trim(m_texts[which - 1]));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '.');
    return text.empty() ? std::nullopt : std::optional<std::string>(std::move(text));
}

std::vector<SmbiosStructure> parseSmbiosTable(std::string_view table) {
    std::vector<SmbiosStructure> structures;
    while (std::optional<SmbiosStructure> structure = takeStructure(table)) {
        if (structure->type() == endOfTable)
            break;
        structures.push_back(std::move(*structure));
    }
    return structures;
}

std::vector<SmbiosStructure> smbiosStructures(const Host& host) {
    return parseSmbiosTable(host.readFile("/sys/firmware/dmi/tables/DMI").value_or(""));
}

} // namespace cimom
