#include "host/PciNames.hpp"

#include <cstdio>
#include <string_view>

namespace cimom {

using namespace OpenWBEM;

namespace {

std::string fourDigits(UInt16 number) {
    char digits[5];
    std::snprintf(digits, sizeof digits, "%04x", static_cast<unsigned>(number));
    return digits;
}

/** What is behind a text in the line that begins with it; empty when there is no such line. */
std::string_view restOfLine(std::string_view list, const std::string& beginning) {
    const std::size_t found = list.find("\n" + beginning);
    if (found == std::string_view::npos)
        return {};
    list.remove_prefix(found + 1 + beginning.size());
    return trimmed(list.substr(0, list.find('\n')));
}

/** The lines of a vendor's devices: they follow the vendor's and begin with a tab; with comments. */
std::string_view devicesOf(std::string_view list, const std::string& vendorLine) {
    const std::size_t found = list.find("\n" + vendorLine);
    if (found == std::string_view::npos)
        return {};
    list.remove_prefix(found + 1);
    std::size_t end = list.find('\n');
    while (end != std::string_view::npos && end + 1 < list.size() &&
           (list[end + 1] == '\t' || list[end + 1] == '#'))
        end = list.find('\n', end + 1);
    return list.substr(0, end);
}

} // namespace

PciNames::PciNames(const Host& host)
    : m_list("\n") {
    for (const char* const path : {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids"}) {
        if (const std::optional<std::string> content = host.readFile(path)) {
            m_list += *content;
            return;
        }
    }
}

std::string PciNames::vendor(UInt16 vendor) const {
    const std::string digits = fourDigits(vendor);
    const std::string_view name = restOfLine(m_list, digits + "  ");
    return name.empty() ? digits : std::string(name);
}

std::string PciNames::device(UInt16 vendor, UInt16 device) const {
    const std::string vendorDigits = fourDigits(vendor);
    const std::string digits = fourDigits(device);
    const std::string_view name = restOfLine(devicesOf(m_list, vendorDigits + "  "), "\t" + digits + "  ");
    return name.empty() ? vendorDigits + ":" + digits : std::string(name);
}

} // namespace cimom
