#ifndef CIMOM_HOST_MOUNTS_HPP_INCLUDED
#define CIMOM_HOST_MOUNTS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/DeviceNumber.hpp"
#include "host/Host.hpp"

#include <string>
#include <vector>

namespace cimom {

/**
 * A file system, or a part of one, as it is mounted on a folder: a line of /proc/self/mountinfo, proc(5).
 */
struct Mount {
    /** Identifies the mount as long as it is there; given to another one later. */
    OpenWBEM::UInt32 id;
    /** The mount that it stands on. */
    OpenWBEM::UInt32 parent;
    /** Of the file system: its block device or, with the major number 0, a number of its own. */
    DeviceNumber device;
    /** The folder of the file system that is mounted; "/" for all of it. */
    std::string part;
    /** The folder that it is mounted on. */
    std::string point;
    /** Such as "ext4" or "fuse.sshfs". */
    std::string type;
    /** A device file, "server:/folder", or any text. */
    std::string source;
    bool isReadOnly;
};

/**
 * The mounts that can be seen: of those that stand on the same folder, the one on top, and none that are
 * below a folder which another mount has covered since. In the kernel's order.
 */
std::vector<Mount> mounts(const Host& host);

/** Whether a path leads into a folder other than "/"; both are absolute and without a slash at the end. */
bool isBelow(const std::string& path, const std::string& folder);

} // namespace cimom
#endif
