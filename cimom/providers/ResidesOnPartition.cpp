#include "host/Residence.hpp"
#include "objects/Naming.hpp"
#include "providers/Association.hpp"
#include "providers/Providers.hpp"
#include "providers/Storage.hpp"

namespace cimom {
namespace {

std::vector<References> fileSystemsAndPartitions(const Host& host) {
    const std::vector<Disk> allDisks = disks(host);
    std::vector<References> pairs;
    for (const FileSystem& fileSystem : fileSystems(host)) {
        for (const Partition* const partition : partitionsOf(fileSystem.mount, allDisks, host))
            pairs.emplace_back(pathOf(namedFileSystem(fileSystem).build()),
                               pathOf(namedDiskPartition(*partition).build()));
    }
    return pairs;
}

} // namespace

/** An instance for each mount of a file system and each partition that it is on. */
std::unique_ptr<Provider> makeResidesOnPartition(const Host& host) {
    return std::make_unique<Association>("QAV_ResidesOnPartition",
                                         AssociationEnd{"Dependent", "QAV_FileSystem"},
                                         AssociationEnd{"Antecedent", "QAV_DiskPartition"},
                                         [&host] { return fileSystemsAndPartitions(host); });
}

} // namespace cimom
