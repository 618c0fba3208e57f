#include "host/Residence.hpp"

#include <set>

namespace cimom {
namespace {

/** A disk, and the partition of it that is meant, if any. */
struct Place {
    const Disk* disk = nullptr;
    const Partition* partition = nullptr;
};

/** The disk or partition for which a condition holds. */
template <class Condition>
Place placeWhere(const std::vector<Disk>& all, const Condition& holds) {
    for (const Disk& disk : all) {
        if (holds(disk))
            return {&disk, nullptr};
        for (const Partition& partition : disk.partitions) {
            if (holds(partition))
                return {&disk, &partition};
        }
    }
    return {};
}

Place placeNamed(const std::string& name, const std::vector<Disk>& all) {
    return placeWhere(all, [&name](const auto& device) { return device.name == name; });
}

Place placeOf(const Mount& mount, const std::vector<Disk>& all, const Host& host) {
    if (mount.device.majorNumber != 0)
        return placeWhere(all, [&mount](const auto& device) { return device.number == mount.device; });
    // A file system that may be on several devices, as btrfs, has a number of its own.
    // Its device file may be a link, as those of the device mapper are.
    if (isBelow(mount.source, "/dev"))
        return placeNamed(kernelName(host.readLink(mount.source).value_or(mount.source)), all);
    return {};
}

} // namespace

const Disk* diskOf(const Mount& mount, const std::vector<Disk>& all, const Host& host) {
    return placeOf(mount, all, host).disk;
}

std::vector<const Partition*> partitionsOf(const Mount& mount, const std::vector<Disk>& all,
                                           const Host& host) {
    std::vector<const Partition*> found;
    std::vector<Place> places = {placeOf(mount, all, host)};
    std::set<const void*> seen;
    while (!places.empty()) {
        const Place place = places.back();
        places.pop_back();
        if (place.partition && seen.insert(place.partition).second)
            found.push_back(place.partition);
        if (!place.disk || place.partition || !seen.insert(place.disk).second)
            continue;
        const std::string slaves = "/sys/block/" + place.disk->name + "/slaves";
        for (const std::string& name : host.listDirectory(slaves).value_or(std::vector<std::string>()))
            places.push_back(placeNamed(name, all));
    }
    return found;
}

} // namespace cimom
