#ifndef CIMOM_HOST_RESIDENCE_HPP_INCLUDED
#define CIMOM_HOST_RESIDENCE_HPP_INCLUDED
#include "host/Disks.hpp"
#include "host/Host.hpp"
#include "host/Mounts.hpp"

#include <vector>

namespace cimom {

/**
 * The disk that a file system is on, or on a partition of; null when it is on none of them. The result
 * points into `all`.
 */
const Disk* diskOf(const Mount& mount, const std::vector<Disk>& all, const Host& host);

/**
 * The partitions that a file system is on. A file system on a device that is made of others (dm, md) is on
 * the partitions below that, which /sys/block/<disk>/slaves tells; one on a whole disk is on none. The
 * results point into `all`.
 */
std::vector<const Partition*> partitionsOf(const Mount& mount, const std::vector<Disk>& all,
                                           const Host& host);

} // namespace cimom
#endif
