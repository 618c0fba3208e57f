#include "host/Modules.hpp"

#include "host/Pci.hpp"
#include "host/Smbios.hpp"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <map>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** DSP0134, Memory Device: type of the structure, and offsets of its fields. */
namespace memoryDevice {
const UInt8 type = 17;
const std::size_t size = 0x0C;
const std::size_t formFactor = 0x0E;
const std::size_t locator = 0x10;
const std::size_t manufacturer = 0x17;
const std::size_t serialNumber = 0x18;
const std::size_t partNumber = 0x1A;
const std::size_t firmwareVersion = 0x2B;
} // namespace memoryDevice

/** Whether memory of a form factor is in a socket; absent if the form factor does not determine it. */
std::optional<bool> isReplaceable(std::optional<UInt8> form) {
    static const UInt8 socketed[] = {3, 4, 6, 9, 12, 13, 14, 15}; // SIMM, SIP, DIP, DIMM, RIMM and so on
    static const UInt8 soldered[] = {5, 11, 16};                  // chip, row of chips, die
    const auto isOneOf = [&](const auto& forms) {
        return std::find(std::begin(forms), std::end(forms), form.value_or(0)) != std::end(forms);
    };
    if (isOneOf(socketed))
        return true;
    return isOneOf(soldered) ? std::optional<bool>(false) : std::nullopt;
}

Module memoryModule(UInt32 socket, const SmbiosStructure& structure) {
    Module module{};
    module.index = firstMemoryIndex + socket;
    module.deviceID = "memory:" + std::to_string(socket);
    module.location = structure.text(memoryDevice::locator).value_or("memory socket");
    module.kind = "memory module";
    module.version = structure.text(memoryDevice::firmwareVersion);
    module.serialNumber = structure.text(memoryDevice::serialNumber);
    module.manufacturer = structure.text(memoryDevice::manufacturer);
    module.partNumber = structure.text(memoryDevice::partNumber);
    module.isReplaceable = isReplaceable(structure.byte(memoryDevice::formFactor));
    return module;
}

std::vector<Module> memoryModules(const std::vector<SmbiosStructure>& structures) {
    std::vector<Module> modules;
    UInt32 socket = 0;
    for (const SmbiosStructure& structure : structures) {
        if (structure.type() != memoryDevice::type)
            continue;
        if (firstMemoryIndex + socket == firstCardIndex)
            break; // no host has so many sockets
        // 0 is an empty socket, 0xFFFF a module of unknown size.
        if (structure.word(memoryDevice::size).value_or(0) != 0)
            modules.push_back(memoryModule(socket, structure));
        ++socket;
    }
    return modules;
}

/** DSP0134, System Slots: type of the structure, and offsets of its fields. */
namespace systemSlot {
const UInt8 type = 9;
const std::size_t designation = 0x04;
const std::size_t segment = 0x0D;
const std::size_t bus = 0x0F;
const std::size_t deviceAndFunction = 0x10;
} // namespace systemSlot

/** A slot of the SMBIOS table; absent if it is not on a PCI bus or has no address. */
std::optional<PciSlot> slotIn(const SmbiosStructure& structure) {
    const std::optional<std::string> name = structure.text(systemSlot::designation);
    const std::optional<UInt16> domain = structure.word(systemSlot::segment);
    const std::optional<UInt8> onBus = structure.byte(systemSlot::bus);
    const std::optional<UInt8> device = structure.byte(systemSlot::deviceAndFunction);
    if (structure.type() != systemSlot::type || !name || !domain || !onBus || !device)
        return std::nullopt;
    if (*onBus == 0xFF && *device == 0xFF)
        return std::nullopt;
    return PciSlot{*name, {*domain, *onBus, static_cast<UInt8>(*device >> 3), 0}};
}

/** The slots of the firmware, with the names that are printed on the board, then those of the kernel. */
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

/** The index of a card, which follows from its address. */
UInt32 indexOf(const PciAddress& address) {
    const UInt32 inDomain = UInt32{address.bus} << 8 | UInt32{address.device} << 3 | address.function;
    return firstCardIndex + (address.domain << 16) + inDomain;
}

/** Whether a domain has indexes. Larger numbers are virtual domains of the kernel. */
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

/** @param slot null if it is unknown */
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

/** Adds the index to locations with the same name, such as sockets that the firmware all names "DIMM". */
void makeLocationsUnique(std::vector<Module>& modules) {
    std::map<std::string, std::size_t> uses;
    for (const Module& module : modules)
        ++uses[module.location];
    for (Module& module : modules) {
        std::string location = module.location;
        while (uses[location] > 1) {
            location += " #" + std::to_string(module.index);
            ++uses[location];
        }
        module.location = location;
    }
}

/** DSP0134, System Enclosure or Chassis: type of the structure, and offsets of its fields. */
namespace enclosure {
const UInt8 type = 3;
const std::size_t manufacturer = 0x04;
const std::size_t chassisType = 0x05;
const std::size_t version = 0x06;
const std::size_t serialNumber = 0x07;
const std::size_t elementCount = 0x13;
const std::size_t elementSize = 0x14;
const std::size_t elements = 0x15;
} // namespace enclosure

/** The chassis type without its highest bit, which is set if there is a lock. */
std::optional<UInt8> chassisType(const SmbiosStructure& structure) {
    const std::optional<UInt8> type = structure.byte(enclosure::chassisType);
    return type ? std::optional<UInt8>(*type & 0x7F) : std::nullopt;
}

/** The part number. It follows a list of variable length. */
std::optional<std::string> partNumber(const SmbiosStructure& structure) {
    const std::optional<UInt8> count = structure.byte(enclosure::elementCount);
    const std::optional<UInt8> size = structure.byte(enclosure::elementSize);
    if (!count || !size)
        return std::nullopt;
    return structure.text(enclosure::elements + std::size_t{*count} * *size);
}

} // namespace

std::vector<Module> modules(const Host& host) {
    const std::vector<SmbiosStructure> structures = smbiosStructures(host);
    std::vector<Module> all = memoryModules(structures);
    std::vector<Module> cards = expansionCards(host, structures);
    all.insert(all.end(), std::make_move_iterator(cards.begin()), std::make_move_iterator(cards.end()));
    makeLocationsUnique(all);
    return all;
}

std::vector<ExpansionChassis> expansionChassis(const Host& host) {
    std::vector<ExpansionChassis> all;
    bool isFirst = true;
    UInt32 index = firstExpansionChassisIndex;
    for (const SmbiosStructure& structure : smbiosStructures(host)) {
        if (structure.type() != enclosure::type)
            continue;
        // No host has so many enclosures that they reach the indexes of its memory.
        if (!isFirst && index < firstMemoryIndex)
            all.push_back({index++, chassisType(structure), structure.text(enclosure::manufacturer),
                           structure.text(enclosure::version), structure.text(enclosure::serialNumber),
                           partNumber(structure)});
        isFirst = false;
    }
    return all;
}

} // namespace cimom
