#ifndef CIMOM_HOST_PARTITION_NAMES_HPP_INCLUDED
#define CIMOM_HOST_PARTITION_NAMES_HPP_INCLUDED
#include "host/Disks.hpp"
#include "host/Host.hpp"

#include <map>
#include <optional>
#include <string>

namespace cimom {

/**
 * What partitions are called by their partition tables and by the file systems on them. The links of
 * /dev/disk, which udev(7) makes, tell it; where they do not, since two partitions are called alike or
 * there is no udev, udev's own data in /run/udev/data and the kernel's uevent file are asked.
 */
class PartitionNames {
public:
    /** Reads the links. @param host must outlive this object */
    explicit PartitionNames(const Host& host);

    /** The label of the file system or, without one, the name in the partition table. */
    std::optional<std::string> label(const Partition& partition) const;

    /**
     * The UUID in the partition table (with an MBR: the disk's signature and the ordinal) or, without one,
     * that of the file system.
     */
    std::optional<std::string> identity(const Partition& partition) const;

private:
    struct Kind;
    /** Names by the kernel's names of block devices. */
    using Links = std::map<std::string, std::string>;

    Links readLinks(const std::string& folder) const;
    std::optional<std::string> name(const Kind& kind, const Partition& partition) const;

    const Host& m_host;
    std::map<std::string, Links> m_links; // by their folders
};

} // namespace cimom
#endif
