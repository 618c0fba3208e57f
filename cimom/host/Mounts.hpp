#ifndef CIMOM_HOST_MOUNTS_HPP_INCLUDED
#define CIMOM_HOST_MOUNTS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/DeviceNumbers.hpp"
#include "host/Host.hpp"

#include <string>
#include <vector>

namespace cimom {

/** A mount of a file system or a part of one: a line of /proc/self/mountinfo, proc(5). */
struct Mount {
    /** Identifies the mount while it exists; reused later. */
    OpenWBEM::UInt32 id;
    /** The id of the mount that holds the mount point. */
    OpenWBEM::UInt32 parent;
    /** The block device of the file system; with the major number 0, the number of a file system without one.
     */
    DeviceNumber device;
    /** The mounted directory of the file system; "/" for all of it. */
    std::string part;
    /** The mount point. */
    std::string point;
    /** Such as "ext4" or "fuse.sshfs". */
    std::string type;
    /** A device file, "server:/directory", or any text. */
    std::string source;
    bool isReadOnly;
};

/**
 * The visible mounts, in the kernel's order: of several on the same mount point the one on top, and none
 * below a directory that a later mount covers.
 */
std::vector<Mount> mounts(const Host& host);

/** Whether a path is below a directory other than "/". Both are absolute, without a slash at the end. */
bool isBelow(const std::string& path, const std::string& directory);

} // namespace cimom
#endif
