#ifndef CIMOM_HOST_FILE_SYSTEMS_HPP_INCLUDED
#define CIMOM_HOST_FILE_SYSTEMS_HPP_INCLUDED
#include "host/Host.hpp"
#include "host/Mounts.hpp"

#include <vector>

namespace cimom {

/** Where a file system keeps its files. */
enum class Backing {
    blockDevice,
    memory,
    /** Another computer, or the host of a virtual machine. */
    remote,
    /** Other file systems, or devices of which the kernel does not tell. */
    other
};

/** A mounted file system that keeps files. */
struct FileSystem {
    Mount mount;
    Backing backing;
    /** Whether the host boots from it: it holds /boot. */
    bool isBootable;
    /** Whether the way to it leads through a remote one, other than "/", so that another computer may hold
     * up who looks at it. */
    bool isBehindRemote;
};

/**
 * The mounts that keep files: of types that need a block device (/proc/filesystems, proc(5), does not mark
 * them "nodev"), the known remote types, the file systems in memory that have a size (tmpfs, devtmpfs), and
 * overlay and zfs. Without /proc/filesystems none is known to need a block device. Left out are all others
 * without a device: those by which the kernel shows itself (proc, sysfs, cgroup...), and programs of the
 * user (fuse).
 */
std::vector<FileSystem> fileSystems(const Host& host);

} // namespace cimom
#endif
