#ifndef CIMOM_HOST_DISKS_HPP_INCLUDED
#define CIMOM_HOST_DISKS_HPP_INCLUDED
#include "OW_Types.hpp"
#include "host/DeviceNumbers.hpp"
#include "host/Host.hpp"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** A partition of a disk. */
struct Partition {
    /** The kernel's name, such as "sda1"; unique among disks and partitions. "!" replaces a slash. */
    std::string name;
    DeviceNumber number;
    /** Its number on the disk, from 1. */
    OpenWBEM::UInt32 ordinal;
    /** In sectors of 512 bytes, whatever the sector size of the disk. */
    std::optional<OpenWBEM::UInt64> sectors;
};

/** The storage medium of a disk. */
enum class Medium {
    /** All other hardware, including solid-state disks. */
    disk,
    floppy,
    optical,
    /** Memory of the host (ram, zram). */
    memory,
    /** No medium: the device is made of other disks or files (dm, md, loop). */
    none
};

/** A block device other than a partition. What the kernel does not report is absent. */
struct Disk {
    /** Like Partition::name. */
    std::string name;
    DeviceNumber number;
    /** See DeviceIndexes. */
    OpenWBEM::UInt32 deviceIndex;
    Medium medium;
    /** In sectors of 512 bytes; absent also if the drive is empty. */
    std::optional<OpenWBEM::UInt64> sectors;
    std::optional<bool> isReadOnly;
    /** Whether its medium can be removed. */
    std::optional<bool> isRemovable;
    /** Vendor, model and revision. */
    std::optional<std::string> model;
    /** Whether the hardware responds; false once the kernel has given it up. Absent also in transient states.
     */
    std::optional<bool> isRunning;
    /** Failed requests since the kernel found the disk (SCSI). */
    std::optional<OpenWBEM::UInt32> errors;
    /** Sorted by ordinal. */
    std::vector<Partition> partitions;
};

/**
 * The block devices of /sys/block, sysfs(5), sorted by device number. Skips devices without hardware and with
 * size 0 (loop devices without a file), and entries without a device number.
 */
std::vector<Disk> disks(const Host& host);

/** The kernel's name, see Partition::name, of a file in /dev or of the target of a link below /dev. */
std::string kernelName(std::string file);

/** A number of sectors of 512 bytes in units of 1024 bytes, rounded down. */
std::optional<OpenWBEM::UInt64> kilobytes(std::optional<OpenWBEM::UInt64> sectors);

/**
 * The names of partitions in partition tables and file systems. They come from the links of udev(7) in
 * /dev/disk. If a link is missing, because two partitions have the same name or there is no udev, they come
 * from udev's data in /run/udev/data or the kernel's uevent file.
 */
class PartitionNames {
public:
    /** Reads the links. @param host must outlive this object */
    explicit PartitionNames(const Host& host);

    /** The label of the file system; without one, the name in the partition table. */
    std::optional<std::string> label(const Partition& partition) const;

    /**
     * The UUID in the partition table (with an MBR: the signature of the disk and the ordinal); without one,
     * the UUID of the file system.
     */
    std::optional<std::string> identity(const Partition& partition) const;

private:
    struct Kind;
    /** Names by the kernel's name of the partition. */
    using Links = std::map<std::string, std::string>;

    Links readLinks(const std::string& directory) const;
    std::optional<std::string> name(const Kind& kind, const Partition& partition) const;

    const Host& m_host;
    std::map<std::string, Links> m_links; // by their directories
};

} // namespace cimom
#endif
