#include "host/Disks.hpp"
#include "host/FileSystems.hpp"
#include "host/Storages.hpp"
#include "providers/Association.hpp"
#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"
#include "schema/Namespace.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not count failed allocations of storage.
const ClassDeclaration storageExtentClass{"QAV_StorageExtent",
                                          {{"CreationClassName", CIMDataType::STRING, Role::key},
                                           {"DeviceID", CIMDataType::STRING, Role::key},
                                           {"StorageType", CIMDataType::UINT16},
                                           {"Purpose", CIMDataType::STRING},
                                           {"Blocksize", CIMDataType::UINT64},
                                           {"NumberOfBlocks", CIMDataType::UINT64},
                                           {"StorageUsed", CIMDataType::UINT64},
                                           {"AllocationFailures", CIMDataType::UINT32},
                                           {"_INDEX", CIMDataType::UINT32}}};

/** @param id see Storage::id */
InstanceBuilder storageExtentKeys(const std::string& id) {
    InstanceBuilder instance(storageExtentClass);
    instance.set("CreationClassName", CIMValue(storageExtentClass.name))
        .set("DeviceID", CIMValue(id.c_str()));
    return instance;
}

/** A row of hrStorageTable of RFC 2790. */
CIMInstance storageExtentInstance(const Storage& storage, const Host& host) {
    const StorageSize size = sizeOf(storage, host);
    return storageExtentKeys(storage.id)
        .set("StorageType", CIMValue(static_cast<UInt16>(storage.type)))
        .set("Purpose", CIMValue(storage.description.c_str()))
        .set("Blocksize", size.unit)
        .set("NumberOfBlocks", size.size)
        .set("StorageUsed", size.used)
        .set("_INDEX", CIMValue(storage.index))
        .build();
}

std::unique_ptr<InstanceSource> storageExtents(const Host& host) {
    return eachOf(storages(host), [&host](const Storage& each) { return storageExtentInstance(each, host); });
}

// Linux does not keep the dates of backups.
const ClassDeclaration fileSystemClass{"QAV_FileSystem",
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

InstanceBuilder fileSystemKeys(const FileSystem& fileSystem) {
    InstanceBuilder instance(fileSystemClass);
    instance.set("CreationClassName", CIMValue(fileSystemClass.name))
        .set("Name", CIMValue(fileSystem.mount.point.c_str()));
    return instance;
}

/** hrFSRemoteMountPoint of RFC 2790: empty for a local file system. */
std::string remoteMountPoint(const FileSystem& fileSystem) {
    return fileSystem.backing == Backing::remote ? fileSystem.mount.source : "";
}

/** A row of hrFSTable of RFC 2790. */
CIMInstance fileSystemInstance(const FileSystem& fileSystem) {
    return fileSystemKeys(fileSystem)
        .set("Index", CIMValue(fileSystem.mount.id))
        .set("Root", CIMValue(fileSystem.mount.point.c_str()))
        .set("RemoteMountPoint", CIMValue(remoteMountPoint(fileSystem).c_str()))
        .set("FileSystemType", CIMValue(fileSystem.mount.type.c_str()))
        .set("ReadOnly", CIMValue(Bool(fileSystem.mount.isReadOnly)))
        .set("Bootable", CIMValue(Bool(fileSystem.isBootable)))
        .set("StorageIndex", CIMValue(storageIndex(fileSystem)))
        .build();
}

const ClassDeclaration partitionClass{"QAV_DiskPartition",
                                      {{"CreationClassName", CIMDataType::STRING, Role::key},
                                       {"DeviceID", CIMDataType::STRING, Role::key},
                                       {"Index", CIMDataType::UINT32},
                                       {"Label", CIMDataType::STRING},
                                       {"Identity", CIMDataType::STRING},
                                       {"Size", CIMDataType::UINT64},
                                       {"HR_DEVICE_INDEX", CIMDataType::UINT32}}};

InstanceBuilder partitionKeys(const Partition& partition) {
    InstanceBuilder instance(partitionClass);
    instance.set("CreationClassName", CIMValue(partitionClass.name))
        .set("DeviceID", CIMValue(partition.name.c_str()));
    return instance;
}

/** A partition, and its names, which PartitionNames reads for all partitions together. */
struct NamedPartition {
    Partition partition;
    UInt32 diskIndex;
    std::optional<std::string> label;
    std::optional<std::string> identity;
};

std::vector<NamedPartition> namedPartitions(const Host& host) {
    const PartitionNames names(host);
    std::vector<NamedPartition> all;
    for (const Disk& disk : disks(host)) {
        for (const Partition& partition : disk.partitions)
            all.push_back({partition, disk.deviceIndex, names.label(partition), names.identity(partition)});
    }
    return all;
}

/** A row of hrPartitionTable of RFC 2790; the size in KByte. */
CIMInstance partitionInstance(const NamedPartition& each) {
    return partitionKeys(each.partition)
        .set("Index", CIMValue(each.partition.ordinal))
        .set("Label", each.label)
        .set("Identity", each.identity)
        .set("Size", kilobytes(each.partition.sectors))
        .set("HR_DEVICE_INDEX", CIMValue(each.diskIndex))
        .build();
}

const ClassDeclaration diskClass{"QAV_MediaAccessDevice",
                                 {{"CreationClassName", CIMDataType::STRING, Role::key},
                                  {"DeviceID", CIMDataType::STRING, Role::key},
                                  {"Capabilities", CIMDataType::UINT16, Role::state, true},
                                  {"StorageType", CIMDataType::UINT16},
                                  {"MaxMediaSize", CIMDataType::UINT64},
                                  {"_HR_DEVICE_INDEX", CIMDataType::UINT32},
                                  {"OperationalStatus", CIMDataType::UINT16, Role::state, true},
                                  {"Errors", CIMDataType::UINT32}}};

/** CIM_MediaAccessDevice.Capabilities. */
UInt16Array capabilities(const Disk& disk) {
    const UInt16 randomAccess = 3;
    const UInt16 supportsWriting = 4;
    const UInt16 supportsRemovableMedia = 7;
    UInt16Array values(1, randomAccess);
    if (disk.isReadOnly == false)
        values.push_back(supportsWriting);
    if (disk.isRemovable == true)
        values.push_back(supportsRemovableMedia);
    return values;
}

/**
 * hrDiskStorageMedia of RFC 2790. RFC 2790 has no code for solid-state disks, and /sys does not report
 * whether an optical drive writes.
 */
UInt16 storageMedia(Medium medium) {
    switch (medium) {
    case Medium::disk:
        return 3; // hardDisk
    case Medium::floppy:
        return 4; // floppyDisk
    case Medium::optical:
        return 5; // opticalDiskROM
    case Medium::memory:
        return 8; // ramDisk
    case Medium::none:
        break;
    }
    return 1; // other
}

/** CIM_ManagedSystemElement.OperationalStatus: one value. */
std::optional<UInt16Array> operationalStatus(std::optional<bool> isRunning) {
    const UInt16 ok = 2;
    const UInt16 stopped = 10;
    return isRunning ? std::optional<UInt16Array>(UInt16Array(1, *isRunning ? ok : stopped)) : std::nullopt;
}

/** A row of hrDiskStorageTable of RFC 2790; the size in KByte. */
CIMInstance diskInstance(const Disk& disk) {
    return InstanceBuilder(diskClass)
        .set("CreationClassName", CIMValue(diskClass.name))
        .set("DeviceID", CIMValue(disk.name.c_str()))
        .set("Capabilities", CIMValue(capabilities(disk)))
        .set("StorageType", CIMValue(storageMedia(disk.medium)))
        .set("MaxMediaSize", kilobytes(disk.sectors))
        .set("_HR_DEVICE_INDEX", CIMValue(disk.deviceIndex))
        .set("OperationalStatus", operationalStatus(disk.isRunning))
        .set("Errors", disk.errors)
        .build();
}

/** Each mount and each partition that backs it. */
const ClassDeclaration onPartitionClass = associationClass(
    "QAV_ResidesOnPartition", {"Dependent", "QAV_FileSystem"}, {"Antecedent", "QAV_DiskPartition"});

std::vector<References> fileSystemsAndPartitions(const Host& host) {
    const std::vector<Disk> allDisks = disks(host);
    std::vector<References> pairs;
    for (const FileSystem& fileSystem : fileSystems(host)) {
        for (const Partition* const partition : backingPartitions(fileSystem.mount, allDisks, host))
            pairs.emplace_back(pathOf(fileSystemKeys(fileSystem).build()),
                               pathOf(partitionKeys(*partition).build()));
    }
    return pairs;
}

/** Each mount of a local file system and its storage. */
const ClassDeclaration onExtentClass = associationClass(
    "QAV_ResidesOnExtent", {"Dependent", "QAV_FileSystem"}, {"Antecedent", "QAV_StorageExtent"});

std::vector<References> fileSystemsAndExtents(const Host& host) {
    std::vector<References> pairs;
    for (const FileSystem& fileSystem : fileSystems(host)) {
        if (const std::optional<std::string> id = storageId(fileSystem))
            pairs.emplace_back(pathOf(fileSystemKeys(fileSystem).build()),
                               pathOf(storageExtentKeys(*id).build()));
    }
    return pairs;
}

} // namespace

std::vector<Provider> storageProviders(const Host& host) {
    return {
        {&storageExtentClass, [&host] { return storageExtents(host); }},
        {&fileSystemClass, [&host] { return eachOf(fileSystems(host), fileSystemInstance); }},
        {&partitionClass, [&host] { return eachOf(namedPartitions(host), partitionInstance); }},
        {&diskClass, [&host] { return eachOf(disks(host), diskInstance); }},
        {&onPartitionClass,
         [&host] { return associations(onPartitionClass, fileSystemsAndPartitions(host)); }},
        {&onExtentClass, [&host] { return associations(onExtentClass, fileSystemsAndExtents(host)); }},
    };
}

} // namespace cimom
