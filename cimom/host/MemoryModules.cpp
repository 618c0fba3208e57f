#include "host/MemoryModules.hpp"

#include <algorithm>
#include <iterator>

namespace cimom {

using namespace OpenWBEM;

namespace {

// DSP0134, Memory Device: the type of the structure, and the offsets of its fields.
const UInt8 memoryDevice = 17;
enum Field {
    size = 0x0C,
    formFactor = 0x0E,
    deviceLocator = 0x10,
    manufacturer = 0x17,
    serialNumber = 0x18,
    partNumber = 0x1A,
    firmwareVersion = 0x2B
};

/** Whether memory of a form factor is in a socket; absent where the form factor does not tell. */
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

Module moduleIn(UInt32 socket, const SmbiosStructure& structure) {
    Module module{};
    module.index = firstMemoryIndex + socket;
    module.deviceID = "memory:" + std::to_string(socket);
    module.location = structure.text(deviceLocator).value_or("memory socket");
    module.kind = "memory module";
    module.version = structure.text(firmwareVersion);
    module.serialNumber = structure.text(serialNumber);
    module.manufacturer = structure.text(manufacturer);
    module.partNumber = structure.text(partNumber);
    module.isReplaceable = isReplaceable(structure.byte(formFactor));
    return module;
}

} // namespace

std::vector<Module> memoryModules(const std::vector<SmbiosStructure>& structures) {
    std::vector<Module> modules;
    UInt32 socket = 0;
    for (const SmbiosStructure& structure : structures) {
        if (structure.type() != memoryDevice)
            continue;
        if (firstMemoryIndex + socket == firstCardIndex)
            break; // no host has as many sockets
        // 0 stands for an empty socket, 0xFFFF for a module whose size is not known.
        if (structure.word(size).value_or(0) != 0)
            modules.push_back(moduleIn(socket, structure));
        ++socket;
    }
    return modules;
}

} // namespace cimom
