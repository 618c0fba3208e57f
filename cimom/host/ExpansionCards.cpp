#include "host/ExpansionCards.hpp"

#include "host/PciDevices.hpp"
#include "host/PciNames.hpp"

#include <algorithm>
#include <cstdio>

namespace cimom {

using namespace OpenWBEM;

namespace {

// DSP0134, System Slots: the type of the structure, and the offsets of its fields.
const UInt8 systemSlot = 9;
enum Field { designation = 0x04, segment = 0x0D, bus = 0x0F, deviceAndFunction = 0x10 };

/** A slot of the table; absent for one that is not on a PCI bus, or whose place is not told. */
std::optional<PciSlot> slotIn(const SmbiosStructure& structure) {
    const std::optional<std::string> name = structure.text(designation);
    const std::optional<UInt16> domain = structure.word(segment);
    const std::optional<UInt8> onBus = structure.byte(bus);
    const std::optional<UInt8> device = structure.byte(deviceAndFunction);
    if (structure.type() != systemSlot || !name || !domain || !onBus || !device)
        return std::nullopt;
    if (*onBus == 0xFF && *device == 0xFF)
        return std::nullopt;
    return PciSlot{*name, {*domain, *onBus, static_cast<UInt8>(*device >> 3), 0}};
}

/** The slots that the firmware tells, by the names that are printed on the board, then the kernel's. */
std::vector<PciSlot> allSlots(const Host& host, const std::vector<SmbiosStructure>& structures) {
    std::vector<PciSlot> slots;
    for (const SmbiosStructure& structure : structures) {
        if (std::optional<PciSlot> slot = slotIn(structure))
            slots.push_back(std::move(*slot));
    }
    for (const PciSlot& slot : pciSlots(host))
        slots.push_back({"PCI slot " + slot.name, slot.address});
    return slots;
}

/** The first function of each device. */
std::vector<PciFunction> pciDevices(const Host& host) {
    std::vector<PciFunction> devices = pciFunctions(host);
    const auto isSameDevice = [](const PciFunction& a, const PciFunction& b) {
        return a.address.isSameDevice(b.address);
    };
    devices.erase(std::unique(devices.begin(), devices.end(), isSameDevice), devices.end());
    return devices;
}

/** The index of a card: a number from the address for each domain. */
UInt32 indexOf(const PciAddress& address) {
    const UInt32 inDomain = UInt32{address.bus} << 8 | UInt32{address.device} << 3 | address.function;
    return firstCardIndex + (address.domain << 16) + inDomain;
}

/** Whether a domain has indexes. The kernel makes larger ones up for the devices behind a controller. */
bool hasIndexes(UInt32 domain) {
    return domain < 0xFFFF;
}

std::optional<std::string> hexadecimal(std::optional<UInt8> number) {
    char digits[3];
    if (!number)
        return std::nullopt;
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(*number));
    return digits;
}

/** @param slot null when no slot is known */
Module cardOf(const PciFunction& device, const PciSlot* slot, const PciNames& names) {
    Module card{};
    card.index = indexOf(device.address);
    card.deviceID = "pci:" + device.name;
    card.location = slot ? slot->name : device.label.value_or(device.name);
    card.kind = "expansion card";
    card.equipmentType = names.device(device.vendor, device.device);
    card.version = hexadecimal(device.revision);
    card.manufacturer = names.vendor(device.subsystemVendor.value_or(device.vendor));
    if (slot)
        card.isReplaceable = true;
    return card;
}

} // namespace

std::vector<Module> expansionCards(const Host& host, const std::vector<SmbiosStructure>& structures) {
    const std::vector<PciSlot> slots = allSlots(host, structures);
    const PciNames names(host);
    std::vector<Module> cards;
    for (const PciFunction& device : pciDevices(host)) {
        const auto slot = std::find_if(slots.begin(), slots.end(), [&](const PciSlot& each) {
            return each.address.isSameDevice(device.address);
        });
        const bool mayBeCard = slots.empty() || slot != slots.end();
        if (mayBeCard && !device.isBridge() && hasIndexes(device.address.domain))
            cards.push_back(cardOf(device, slot == slots.end() ? nullptr : &*slot, names));
    }
    return cards;
}

} // namespace cimom
