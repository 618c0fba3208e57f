#include "host/Storages.hpp"

#include "host/Disks.hpp"

#include <map>
#include <tuple>

namespace cimom {

using namespace OpenWBEM;

namespace {

const char* const memoryId = "memory";
const char* const swapId = "swap";

enum Index : UInt32 { memoryIndex = 1, swapIndex = 2, firstOfFileSystems = 3 };

/** The values of /proc/meminfo by name, in units of 1024 bytes. */
std::map<std::string, UInt64> memoryValues(const Host& host) {
    const std::string content = host.readFile("/proc/meminfo").value_or("");
    std::map<std::string, UInt64> values;
    for (const std::string_view line : lines(content)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() != 3 || fields[2] != "kB")
            continue;
        if (const std::optional<UInt64> value = number<UInt64>(fields[1]))
            values[std::string(fields[0])] = *value;
    }
    return values;
}

std::optional<UInt64> difference(std::optional<UInt64> size, std::optional<UInt64> free) {
    return size && free && *free <= *size ? std::optional<UInt64>(*size - *free) : std::nullopt;
}

/** The size of memory or swap space, from two lines of /proc/meminfo. */
StorageSize memorySize(const Host& host, const char* total, const char* free) {
    const std::map<std::string, UInt64> values = memoryValues(host);
    const auto value = [&values](const char* name) {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional<UInt64>(found->second);
    };
    if (!value(total))
        return {};
    return {UInt64{1024}, value(total), difference(value(total), value(free))};
}

bool hasSwap(const Host& host) {
    return memorySize(host, "SwapTotal:", "SwapFree:").size.value_or(0) > 0;
}

StorageType typeOf(const FileSystem& fileSystem, const std::vector<Disk>& all, const Host& host) {
    if (fileSystem.backing == Backing::memory)
        return StorageType::ramDisk;
    const Disk* const disk = backingDisk(fileSystem.mount, all, host);
    if (!disk)
        return StorageType::other;
    switch (disk->medium) {
    case Medium::memory:
        return StorageType::ramDisk;
    case Medium::floppy:
        return StorageType::floppyDisk;
    case Medium::optical:
        return StorageType::compactDisc;
    default:
        return disk->isRemovable.value_or(false) ? StorageType::removableDisk : StorageType::fixedDisk;
    }
}

/** Whether one mount of a file system is preferred to another. */
bool isPreferred(const FileSystem& a, const FileSystem& b) {
    const auto rank = [](const Mount& mount) {
        return std::make_tuple(mount.part != "/", mount.point.size(), mount.point);
    };
    return rank(a.mount) < rank(b.mount);
}

/** One mount of each local file system. */
std::vector<FileSystem> localFileSystems(const Host& host) {
    std::map<DeviceNumber, FileSystem> byDevice;
    for (const FileSystem& fileSystem : fileSystems(host)) {
        if (!storageId(fileSystem))
            continue;
        const auto [present, isNew] = byDevice.emplace(fileSystem.mount.device, fileSystem);
        if (!isNew && isPreferred(fileSystem, present->second))
            present->second = fileSystem;
    }
    std::vector<FileSystem> found;
    found.reserve(byDevice.size());
    for (const auto& [device, fileSystem] : byDevice)
        found.push_back(fileSystem);
    return found;
}

} // namespace

std::vector<Storage> storages(const Host& host) {
    std::vector<Storage> all = {{memoryId, memoryIndex, StorageType::ram, "Physical memory", ""}};
    if (hasSwap(host))
        all.push_back({swapId, swapIndex, StorageType::virtualMemory, "Swap space", ""});
    const std::vector<Disk> allDisks = disks(host);
    for (const FileSystem& fileSystem : localFileSystems(host)) {
        const Mount& mount = fileSystem.mount;
        all.push_back({*storageId(fileSystem), storageIndex(fileSystem), typeOf(fileSystem, allDisks, host),
                       mount.point, fileSystem.isBelowRemote ? "" : mount.point});
    }
    return all;
}

StorageSize sizeOf(const Storage& storage, const Host& host) {
    if (storage.id == memoryId)
        return memorySize(host, "MemTotal:", "MemFree:");
    if (storage.id == swapId)
        return memorySize(host, "SwapTotal:", "SwapFree:");
    if (storage.point.empty())
        return {};
    const std::optional<struct statvfs> status = host.fileSystemStatus(storage.point);
    if (!status || status->f_frsize == 0)
        return {};
    return {UInt64{status->f_frsize}, UInt64{status->f_blocks},
            difference(status->f_blocks, status->f_bfree)};
}

std::optional<std::string> storageId(const FileSystem& fileSystem) {
    if (fileSystem.backing == Backing::remote)
        return std::nullopt;
    return fileSystem.mount.device.text();
}

UInt32 storageIndex(const FileSystem& fileSystem) {
    if (fileSystem.backing == Backing::remote)
        return 0;
    // The device number as the kernel encodes it; no device has 0.
    const DeviceNumber& device = fileSystem.mount.device;
    return firstOfFileSystems + (device.majorNumber << 20U) + device.minorNumber;
}

} // namespace cimom
