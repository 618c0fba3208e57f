#include "host/PciDevices.hpp"

#include <algorithm>
#include <tuple>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** Takes a part of an address away, up to a separator or the end. */
std::string_view takePart(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

std::optional<PciFunction> readFunction(const Host& host, const std::string& name) {
    const std::string folder = "/sys/bus/pci/devices/" + name + "/";
    const std::optional<PciAddress> address = parsePciAddress(name);
    const std::optional<UInt32> classCode = host.readHexadecimal<UInt32>(folder + "class");
    const std::optional<UInt16> vendor = host.readHexadecimal<UInt16>(folder + "vendor");
    const std::optional<UInt16> device = host.readHexadecimal<UInt16>(folder + "device");
    if (!address || !classCode || !vendor || !device)
        return std::nullopt;
    std::optional<UInt16> subsystemVendor = host.readHexadecimal<UInt16>(folder + "subsystem_vendor");
    // NOLINTNEXTLINE(misc-redundant-expression): the check does not see what the optional is compared with
    if (subsystemVendor == 0 || subsystemVendor == 0xFFFF)
        subsystemVendor.reset();
    return PciFunction{name,
                       *address,
                       *classCode,
                       *vendor,
                       *device,
                       subsystemVendor,
                       host.readHexadecimal<UInt8>(folder + "revision"),
                       host.readLine(folder + "label")};
}

auto order(const PciAddress& address) {
    return std::tie(address.domain, address.bus, address.device, address.function);
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

} // namespace cimom
