#include "host/Devices.hpp"

#include "host/Disks.hpp"
#include "host/Processors.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

DeviceStatus statusOf(std::optional<bool> isRunning) {
    if (!isRunning)
        return DeviceStatus::unknown;
    return *isRunning ? DeviceStatus::running : DeviceStatus::down;
}

/** An interface that waits for another, or for a packet to send, can be used as little as one that is down.
 */
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

std::vector<Device> devices(const Host& host) {
    std::vector<Device> all;
    addProcessors(host, all);
    addInterfaces(host, all);
    addDisks(host, all);
    return all;
}

std::vector<std::pair<NetworkInterface, UInt32>> indexedInterfaces(const Host& host) {
    DeviceIndexes indexes(DeviceType::network);
    std::vector<std::pair<NetworkInterface, UInt32>> all;
    for (NetworkInterface& each : networkInterfaces(host)) {
        const UInt32 index = indexes.next(each.index);
        all.emplace_back(std::move(each), index);
    }
    return all;
}

} // namespace cimom
