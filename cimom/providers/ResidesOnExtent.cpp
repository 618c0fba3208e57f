#include "host/Storages.hpp"
#include "objects/Naming.hpp"
#include "providers/Association.hpp"
#include "providers/Providers.hpp"
#include "providers/Storage.hpp"

namespace cimom {
namespace {

std::vector<References> fileSystemsAndExtents(const Host& host) {
    std::vector<References> pairs;
    for (const FileSystem& fileSystem : fileSystems(host)) {
        if (const std::optional<std::string> id = storageId(fileSystem))
            pairs.emplace_back(pathOf(namedFileSystem(fileSystem).build()),
                               pathOf(namedStorageExtent(*id).build()));
    }
    return pairs;
}

} // namespace

/** An instance for each mount of a local file system. */
std::unique_ptr<Provider> makeResidesOnExtent(const Host& host) {
    return std::make_unique<Association>("QAV_ResidesOnExtent", AssociationEnd{"Dependent", "QAV_FileSystem"},
                                         AssociationEnd{"Antecedent", "QAV_StorageExtent"},
                                         [&host] { return fileSystemsAndExtents(host); });
}

} // namespace cimom
