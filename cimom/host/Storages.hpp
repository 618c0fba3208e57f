#ifndef CIMOM_HOST_STORAGES_HPP_INCLUDED
#define CIMOM_HOST_STORAGES_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/FileSystems.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** Kinds of storage: hrStorageTypes of RFC 2790. */
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

/** A row of the storage table of RFC 2790: memory, swap space, or a local file system. */
struct Storage {
    /** Identifies it among the others: "memory", "swap" or the number of a file system's device. */
    std::string id;
    /** From 1 to 2147483647; see storageIndex(). */
    OpenWBEM::UInt32 index;
    StorageType type;
    /** "Physical memory", "Swap space", or the folder that a file system is mounted on. */
    std::string description;
    /** That folder when sizes can be had from there without waiting for another computer; else empty. */
    std::string folder;
};

/** How large a storage is; what the host does not tell is absent. */
struct StorageSize {
    /** Bytes in a unit. */
    std::optional<OpenWBEM::UInt64> unit;
    /** In units. */
    std::optional<OpenWBEM::UInt64> size;
    /** Units that are allocated, to caches of the kernel too. */
    std::optional<OpenWBEM::UInt64> used;
};

/**
 * Memory, swap space when there is any, and each local file system once, however often it is mounted; of
 * its mounts the one of the whole file system tells the folder, of several the one with the shortest path.
 */
std::vector<Storage> storages(const Host& host);

/** The size at this moment, of proc(5): /proc/meminfo or statvfs(3). */
StorageSize sizeOf(const Storage& storage, const Host& host);

/** The id of the storage of a file system; absent for a remote one, which has no storage here. */
std::optional<std::string> storageId(const FileSystem& fileSystem);

/**
 * The index of the storage of a file system, which follows from its device number, so that it is the same
 * as long as the file system is mounted and, on a block device, mostly afterwards too. 0 for a remote one.
 */
OpenWBEM::UInt32 storageIndex(const FileSystem& fileSystem);

} // namespace cimom
#endif
