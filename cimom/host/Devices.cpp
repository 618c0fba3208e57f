#include "host/Devices.hpp"

#include "host/Disks.hpp"
#include "util/Ascii.hpp"

#include <map>

namespace cimom {

using namespace OpenWBEM;

namespace {

/** Processors by number. */
using ProcessorMap = std::map<UInt32, Processor>;

/** Adds the processors of /proc/cpuinfo, proc(5). The line with the number begins a processor. */
void addOnline(const Host& host, ProcessorMap& all) {
    const std::string content = host.readFile("/proc/cpuinfo").value_or("");
    Processor* current = nullptr;
    for (const std::string_view line : lines(content)) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view name = ascii::trim(line.substr(0, colon));
        const std::string_view value = ascii::trim(line.substr(colon + 1));
        if (name == "processor") {
            const std::optional<UInt32> own = number<UInt32>(value);
            current = own ? &all.insert_or_assign(*own, Processor{*own, true, std::nullopt}).first->second
                          : nullptr;
        } else if (current && name == "model name" && !value.empty()) {
            current->model = value;
        }
    }
}

/** Adds the other processors of /sys/devices/system/cpu: the directories "cpu<number>". */
void addOthers(const Host& host, ProcessorMap& all) {
    const std::string directory = "/sys/devices/system/cpu";
    for (const std::string& name : host.listDirectory(directory).value_or(std::vector<std::string>())) {
        const bool hasPrefix = name.compare(0, 3, "cpu") == 0;
        const std::optional<UInt32> own = hasPrefix ? number<UInt32>(name.substr(3)) : std::nullopt;
        if (!own)
            continue;
        const std::optional<unsigned> isOnline =
            host.readNumber<unsigned>(directory + "/" + name + "/online");
        all.emplace(*own, Processor{*own, isOnline ? std::optional<bool>(*isOnline == 1) : std::nullopt,
                                    std::nullopt});
    }
}

DeviceStatus statusOf(std::optional<bool> isRunning) {
    if (!isRunning)
        return DeviceStatus::unknown;
    return *isRunning ? DeviceStatus::running : DeviceStatus::down;
}

/** An interface that is dormant or whose lower layer is down cannot be used: it is down. */
DeviceStatus statusOf(std::optional<OperStatus> status) {
    switch (status.value_or(OperStatus::unknown)) {
    case OperStatus::up:
        return DeviceStatus::running;
    case OperStatus::testing:
        return DeviceStatus::testing;
    case OperStatus::down:
    case OperStatus::dormant:
    case OperStatus::notPresent:
    case OperStatus::lowerLayerDown:
        return DeviceStatus::down;
    case OperStatus::unknown:
        break;
    }
    return DeviceStatus::unknown;
}

std::optional<UInt64> errorsOf(const NetworkInterface& interface) {
    if (!interface.counters)
        return std::nullopt;
    return interface.counters->receiveErrors + interface.counters->sendErrors;
}

void addProcessors(const Host& host, std::vector<Device>& all) {
    DeviceIndexes indexes(DeviceType::processor);
    for (const Processor& each : processors(host)) {
        const std::string name = "cpu" + std::to_string(each.number);
        all.push_back({DeviceType::processor, indexes.next(each.number + 1), name, each.model.value_or(name),
                       statusOf(each.isOnline), std::nullopt});
    }
}

void addInterfaces(const Host& host, std::vector<Device>& all) {
    for (const auto& [each, index] : indexedInterfaces(host))
        all.push_back({DeviceType::network, index, each.name, each.alias.value_or(each.name),
                       statusOf(each.status), errorsOf(each)});
}

void addDisks(const Host& host, std::vector<Device>& all) {
    for (const Disk& each : disks(host))
        all.push_back({DeviceType::disk, each.deviceIndex, each.name, each.model.value_or(each.name),
                       statusOf(each.isRunning), each.errors});
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

std::vector<Device> devices(const Host& host) {
    std::vector<Device> all;
    addProcessors(host, all);
    addInterfaces(host, all);
    addDisks(host, all);
    return all;
}

std::vector<IndexedInterface> indexedInterfaces(const Host& host) {
    DeviceIndexes indexes(DeviceType::network);
    std::vector<IndexedInterface> all;
    for (NetworkInterface& each : networkInterfaces(host)) {
        const UInt32 index = indexes.next(each.index);
        all.emplace_back(std::move(each), index);
    }
    return all;
}

} // namespace cimom
