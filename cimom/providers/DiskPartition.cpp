#include "host/PartitionNames.hpp"
#include "providers/Providers.hpp"
#include "providers/Storage.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

const ClassDeclaration& diskPartitionClass() {
    static const ClassDeclaration declaration{"QAV_DiskPartition",
                                              {{"CreationClassName", CIMDataType::STRING, Role::key},
                                               {"DeviceID", CIMDataType::STRING, Role::key},
                                               {"Index", CIMDataType::UINT32},
                                               {"Label", CIMDataType::STRING},
                                               {"Identity", CIMDataType::STRING},
                                               {"Size", CIMDataType::UINT64},
                                               {"HR_DEVICE_INDEX", CIMDataType::UINT32}}};
    return declaration;
}

/** A partition and what is known of it only together with others. */
struct NamedPartition {
    Partition partition;
    UInt32 deviceIndex;
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

/** An instance for each partition of each disk, as in hrPartitionTable of RFC 2790; sizes in KByte. */
class DiskPartition : public Provider {
public:
    explicit DiskPartition(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return diskPartitionClass(); }

    InstanceSource instances() const override {
        return eachOf(namedPartitions(m_host), [](const NamedPartition& each) {
            return namedDiskPartition(each.partition)
                .set("Index", CIMValue(each.partition.ordinal))
                .set("Label", each.label)
                .set("Identity", each.identity)
                .set("Size", kilobytes(each.partition.sectors))
                .set("HR_DEVICE_INDEX", CIMValue(each.deviceIndex))
                .build();
        });
    }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedDiskPartition(const Partition& partition) {
    InstanceBuilder instance(diskPartitionClass());
    instance.set("CreationClassName", CIMValue(diskPartitionClass().name))
        .set("DeviceID", CIMValue(partition.name.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeDiskPartition(const Host& host) {
    return std::make_unique<DiskPartition>(host);
}

} // namespace cimom
