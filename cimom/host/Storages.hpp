#ifndef CIMOM_HOST_STORAGES_HPP_INCLUDED
#define CIMOM_HOST_STORAGES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/FileSystems.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** hrStorageTypes of RFC 2790. */
enum class StorageType {
    other = 1,
    ram = 2,
    virtualMemory = 3,
    fixedDisk = 4,
    removableDisk = 5,
    floppyDisk = 6,
    compactDisc = 7,
    ramDisk = 8
};

/** A row of the storage table of RFC 2790: memory, swap space or a local file system. */
struct Storage {
    /** Identifies the storage: "memory", "swap" or the device number of a file system. */
    std::string id;
    /** From 1 to 2147483647; see storageIndex(). */
    OpenWBEM::UInt32 index;
    StorageType type;
    /** "Physical memory", "Swap space" or the mount point of a file system. */
    std::string description;
    /** The mount point from which to read the size; empty if the read may wait for another computer. */
    std::string point;
};

/** The size of a storage. What the host does not report is absent. */
struct StorageSize {
    /** Bytes per unit. */
    std::optional<OpenWBEM::UInt64> unit;
    /** In units. */
    std::optional<OpenWBEM::UInt64> size;
    /** Allocated units, including caches of the kernel. */
    std::optional<OpenWBEM::UInt64> used;
};

/**
 * Memory, swap space if there is any, and each local file system once, however often it is mounted. Mounts of
 * the whole file system are preferred, then those with the shortest path.
 */
std::vector<Storage> storages(const Host& host);

/** The present size, from /proc/meminfo, proc(5), or statvfs(3). */
StorageSize sizeOf(const Storage& storage, const Host& host);

/** The id of the storage of a file system; absent for a remote one. */
std::optional<std::string> storageId(const FileSystem& fileSystem);

/**
 * The index of the storage of a file system; 0 for a remote one. It follows from the device number, so it
 * does not change while the file system is mounted; on a block device it is mostly the same after a remount.
 */
OpenWBEM::UInt32 storageIndex(const FileSystem& fileSystem);

} // namespace cimom
#endif
