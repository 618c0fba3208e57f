#include "host/Pci.hpp"

#include "util/Ascii.hpp"

#include <algorithm>
#include <cstdio>
#include <tuple>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** Removes the part of an address up to a separator or the end, and returns it. */
std::string_view takePart(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

std::optional<PciFunction> readFunction(const Host& host, const std::string& name) {
    const std::string directory = "/sys/bus/pci/devices/" + name + "/";
    const std::optional<PciAddress> address = parsePciAddress(name);
    const std::optional<UInt32> classCode = host.readHexadecimal<UInt32>(directory + "class");
    const std::optional<UInt16> vendor = host.readHexadecimal<UInt16>(directory + "vendor");
    const std::optional<UInt16> device = host.readHexadecimal<UInt16>(directory + "device");
    if (!address || !classCode || !vendor || !device)
        return std::nullopt;
    std::optional<UInt16> subsystemVendor = host.readHexadecimal<UInt16>(directory + "subsystem_vendor");
    // NOLINTNEXTLINE(misc-redundant-expression): false positive on comparisons with an optional
    if (subsystemVendor == 0 || subsystemVendor == 0xFFFF)
        subsystemVendor.reset();
    return PciFunction{name,
                       *address,
                       *classCode,
                       *vendor,
                       *device,
                       subsystemVendor,
                       host.readHexadecimal<UInt8>(directory + "revision"),
                       host.readLine(directory + "label")};
}

auto order(const PciAddress& address) {
    return std::tie(address.domain, address.bus, address.device, address.function);
}

std::string fourDigits(UInt16 number) {
    char digits[5];
    std::snprintf(digits, sizeof digits, "%04x", static_cast<unsigned>(number));
    return digits;
}

/** The rest of the first line with a prefix; empty if there is no such line. */
std::string_view restOfLine(std::string_view list, const std::string& prefix) {
    const std::size_t found = list.find("\n" + prefix);
    if (found == std::string_view::npos)
        return {};
    list.remove_prefix(found + 1 + prefix.size());
    return ascii::trim(list.substr(0, list.find('\n')));
}

/** The lines after that of a vendor that begin with a tab: its devices, and comments between them. */
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

bool PciAddress::isSameDevice(const PciAddress& other) const {
    return domain == other.domain && bus == other.bus && device == other.device;
}

std::optional<PciAddress> parsePciAddress(std::string_view text) {
    const std::optional<UInt32> domain = number<UInt32>(takePart(text, ':'), 16);
    const std::optional<UInt8> bus = number<UInt8>(takePart(text, ':'), 16);
    const std::optional<UInt8> device = number<UInt8>(takePart(text, '.'), 16);
    const std::optional<UInt8> function = text.empty() ? UInt8{0} : number<UInt8>(text, 16);
    if (!domain || !bus || !device || *device > 31 || !function || *function > 7)
        return std::nullopt;
    return PciAddress{*domain, *bus, *device, *function};
}

std::vector<PciFunction> pciFunctions(const Host& host) {
    std::vector<PciFunction> functions;
    const auto names = host.listDirectory("/sys/bus/pci/devices").value_or(std::vector<std::string>());
    for (const std::string& name : names) {
        if (std::optional<PciFunction> found = readFunction(host, name))
            functions.push_back(std::move(*found));
    }
    std::sort(functions.begin(), functions.end(),
              [](const PciFunction& a, const PciFunction& b) { return order(a.address) < order(b.address); });
    return functions;
}

std::vector<PciSlot> pciSlots(const Host& host) {
    std::vector<PciSlot> slots;
    auto names = host.listDirectory("/sys/bus/pci/slots").value_or(std::vector<std::string>());
    std::sort(names.begin(), names.end());
    for (std::string& name : names) {
        const std::string line = host.readLine("/sys/bus/pci/slots/" + name + "/address").value_or("");
        if (const std::optional<PciAddress> address = parsePciAddress(line))
            slots.push_back({std::move(name), *address});
    }
    return slots;
}

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
