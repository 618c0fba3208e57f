#ifndef CIMOM_PROVIDERS_STORAGE_HPP_INCLUDED
#define CIMOM_PROVIDERS_STORAGE_HPP_INCLUDED
#include "host/Disks.hpp"
#include "host/FileSystems.hpp"
#include "objects/InstanceBuilder.hpp"

#include <string>

namespace cimom {

// What associations lead to. Each is made with its keys and no other values yet.

InstanceBuilder namedFileSystem(const FileSystem& fileSystem);
/** @param id see Storage::id */
InstanceBuilder namedStorageExtent(const std::string& id);
InstanceBuilder namedDiskPartition(const Partition& partition);

} // namespace cimom
#endif
