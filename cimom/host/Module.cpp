#include "host/Module.hpp"

#include "host/ExpansionCards.hpp"
#include "host/MemoryModules.hpp"
#include "host/Smbios.hpp"

#include <iterator>
#include <map>

namespace cimom {
namespace {

/** Adds the index to places that share their words, as sockets do that the firmware all calls "DIMM". */
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

} // namespace

std::vector<Module> modules(const Host& host) {
    const std::vector<SmbiosStructure> structures = smbiosStructures(host);
    std::vector<Module> all = memoryModules(structures);
    std::vector<Module> cards = expansionCards(host, structures);
    all.insert(all.end(), std::make_move_iterator(cards.begin()), std::make_move_iterator(cards.end()));
    makeLocationsUnique(all);
    return all;
}

} // namespace cimom
