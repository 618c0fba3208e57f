#include "host/Storages.hpp"
#include "providers/Providers.hpp"
#include "providers/Storage.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not keep the dates of backups.
const ClassDeclaration& fileSystemClass() {
    static const ClassDeclaration declaration{"QAV_FileSystem",
                                              {{"CreationClassName", CIMDataType::STRING, Role::key},
                                               {"Name", CIMDataType::STRING, Role::key},
                                               {"Index", CIMDataType::UINT32},
                                               {"Root", CIMDataType::STRING},
                                               {"RemoteMountPoint", CIMDataType::STRING},
                                               {"FileSystemType", CIMDataType::STRING},
                                               {"ReadOnly", CIMDataType::BOOLEAN},
                                               {"Bootable", CIMDataType::BOOLEAN},
                                               {"StorageIndex", CIMDataType::UINT32},
                                               {"LastFullBackupDate", CIMDataType::DATETIME},
                                               {"LastPartialBackupDate", CIMDataType::DATETIME}}};
    return declaration;
}

/** hrFSRemoteMountPoint of RFC 2790: empty unless the file system is remote. */
std::string remoteMountPoint(const FileSystem& fileSystem) {
    return fileSystem.backing == Backing::remote ? fileSystem.mount.source : "";
}

/** An instance for each mount that keeps files, as in hrFSTable of RFC 2790. */
class FileSystemProvider : public Provider {
public:
    explicit FileSystemProvider(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return fileSystemClass(); }

    InstanceSource instances() const override {
        return eachOf(fileSystems(m_host), [](const FileSystem& each) {
            return namedFileSystem(each)
                .set("Index", CIMValue(each.mount.id))
                .set("Root", CIMValue(each.mount.point.c_str()))
                .set("RemoteMountPoint", CIMValue(remoteMountPoint(each).c_str()))
                .set("FileSystemType", CIMValue(each.mount.type.c_str()))
                .set("ReadOnly", CIMValue(Bool(each.mount.isReadOnly)))
                .set("Bootable", CIMValue(Bool(each.isBootable)))
                .set("StorageIndex", CIMValue(storageIndex(each)))
                .build();
        });
    }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedFileSystem(const FileSystem& fileSystem) {
    InstanceBuilder instance(fileSystemClass());
    instance.set("CreationClassName", CIMValue(fileSystemClass().name))
        .set("Name", CIMValue(fileSystem.mount.point.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeFileSystem(const Host& host) {
    return std::make_unique<FileSystemProvider>(host);
}

} // namespace cimom
