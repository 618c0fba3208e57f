#ifndef CIMOM_HOST_FILE_SYSTEMS_HPP_INCLUDED
#define CIMOM_HOST_FILE_SYSTEMS_HPP_INCLUDED
#include "host/Disks.hpp"
#include "host/Host.hpp"
#include "host/Mounts.hpp"

#include <vector>

namespace cimom {

/** What a file system stores its files on. */
enum class Backing {
    blockDevice,
    memory,
    /** Another computer, or the host of a virtual machine. */
    remote,
    /** Other file systems, or devices that the kernel does not report. */
    other
};

/** A mounted file system that stores files. */
struct FileSystem {
    Mount mount;
    Backing backing;
    /** Whether the host boots from it: it holds /boot. */
    bool isBootable;
    /** Whether it is below a remote mount other than "/": access may wait for another computer. */
    bool isBelowRemote;
};

/**
 * The mounts that store files: types that need a block device (not marked "nodev" in /proc/filesystems,
 * proc(5)), known remote types, file systems in memory that have a size (tmpfs, devtmpfs), overlay and zfs.
 * Without /proc/filesystems no type needs a block device. Interfaces of the kernel (proc, sysfs, cgroup, ...)
 * and programs of users (fuse) are skipped.
 */
std::vector<FileSystem> fileSystems(const Host& host);

/**
 * The backing disk of a file system: it is on this disk or on one of its partitions. Null if there is none.
 * The result points into `all`.
 */
const Disk* backingDisk(const Mount& mount, const std::vector<Disk>& all, const Host& host);

/**
 * The backing partitions of a file system. For a device that is made of others (dm, md) these are the
 * partitions that it is made of, see /sys/block/<disk>/slaves. A file system on a whole disk has none. The
 * results point into `all`.
 */
std::vector<const Partition*> backingPartitions(const Mount& mount, const std::vector<Disk>& all,
                                                const Host& host);

} // namespace cimom
#endif
