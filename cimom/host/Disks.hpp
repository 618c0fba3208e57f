#ifndef CIMOM_HOST_DISKS_HPP_INCLUDED
#define CIMOM_HOST_DISKS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/DeviceNumber.hpp"
#include "host/Host.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** A partition of a disk. */
struct Partition {
    /** The kernel's, such as "sda1"; unique among disks and partitions. A "!" stands for a slash. */
    std::string name;
    DeviceNumber number;
    /** Its number on the disk, from 1. */
    OpenWBEM::UInt32 ordinal;
    /** In sectors of 512 bytes, whatever the disk's own are. */
    std::optional<OpenWBEM::UInt64> sectors;
};

/** What a disk keeps its data on. */
enum class Medium {
    /** Anything of hardware that is none of the others, solid-state disks included. */
    disk,
    floppy,
    optical,
    /** Memory of the host (ram, zram). */
    memory,
    /** Other disks or files (dm, md, loop). */
    none
};

/** A block device that is no partition. What the kernel does not tell of it is absent. */
struct Disk {
    /** As Partition::name. */
    std::string name;
    DeviceNumber number;
    /** See DeviceIndexes. */
    OpenWBEM::UInt32 deviceIndex;
    Medium medium;
    /** In sectors of 512 bytes; absent also when there is no medium in the drive. */
    std::optional<OpenWBEM::UInt64> sectors;
    std::optional<bool> isReadOnly;
    /** Whether its medium can be removed. */
    std::optional<bool> isRemovable;
    /** Vendor, model and revision. */
    std::optional<std::string> model;
    /**
     * Whether the hardware answers; false once the kernel has given it up. Absent also in states between.
     */
    std::optional<bool> isRunning;
    /** Requests that ended in an error since the disk was found (SCSI). */
    std::optional<OpenWBEM::UInt32> errors;
    /** In the order of their ordinals. */
    std::vector<Partition> partitions;
};

/**
 * The block devices of /sys/block, sysfs(5), in the order of their device numbers. Left out are those
 * without hardware and of size 0 (a loop device that no file is attached to), and entries without a device
 * number.
 */
std::vector<Disk> disks(const Host& host);

/** The kernel's name, see Partition::name, of a device file: of one in /dev, or of what a link there or in a
 * folder below leads to. */
std::string kernelName(std::string file);

/** A number of sectors of 512 bytes in units of 1024 bytes, rounded down. */
std::optional<OpenWBEM::UInt64> kilobytes(std::optional<OpenWBEM::UInt64> sectors);

} // namespace cimom
#endif
