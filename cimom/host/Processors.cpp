#include "host/Processors.hpp"

#include <map>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** By the numbers of the processors. */
using ProcessorMap = std::map<UInt32, Processor>;

/**
 * Adds the processors of /proc/cpuinfo, proc(5): of each a line with its number and then others about it.
 */
void addOnline(const Host& host, ProcessorMap& all) {
    const std::string content = host.readFile("/proc/cpuinfo").value_or("");
    Processor* current = nullptr;
    for (const std::string_view line : lines(content)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view name = trimmed(line.substr(0, colon));
        const std::string_view value = trimmed(line.substr(colon + 1));
        if (name == "processor") {
            const std::optional<UInt32> own = number<UInt32>(value);
            current = own ? &all.insert_or_assign(*own, Processor{*own, true, std::nullopt}).first->second
                          : nullptr;
        } else if (current && name == "model name" && !value.empty()) {
            current->model = value;
        }
    }
}

/** Adds the other processors of /sys/devices/system/cpu: the folders "cpu<number>". */
void addOthers(const Host& host, ProcessorMap& all) {
    const std::string folder = "/sys/devices/system/cpu";
    for (const std::string& name : host.listDirectory(folder).value_or(std::vector<std::string>())) {
        const bool isNamedSo = name.compare(0, 3, "cpu") == 0;
        const std::optional<UInt32> own = isNamedSo ? number<UInt32>(name.substr(3)) : std::nullopt;
        if (!own)
            continue;
        const std::optional<unsigned> isOnline = host.readNumber<unsigned>(folder + "/" + name + "/online");
        all.emplace(*own, Processor{*own, isOnline ? std::optional<bool>(*isOnline == 1) : std::nullopt,
                                    std::nullopt});
    }
}

} // namespace

std::vector<Processor> processors(const Host& host) {
    ProcessorMap all;
    addOnline(host, all);
    addOthers(host, all);
    std::vector<Processor> found;
    for (const auto& [own, processor] : all)
        found.push_back(processor);
    return found;
}

} // namespace cimom
