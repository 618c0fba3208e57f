#include "host/Disks.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

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
 * hrDiskStorageMedia of RFC 2790. It has no code of its own for solid-state disks, nor tells /sys whether
 * an optical drive writes.
 */
UInt16 storageType(Medium medium) {
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

/** An instance for each disk, as in hrDiskStorageTable of RFC 2790; sizes in KByte. */
class MediaAccessDevice : public Provider {
public:
    explicit MediaAccessDevice(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        return eachOf(disks(m_host), [this](const Disk& each) {
            return InstanceBuilder(m_declaration)
                .set("CreationClassName", CIMValue(m_declaration.name))
                .set("DeviceID", CIMValue(each.name.c_str()))
                .set("Capabilities", CIMValue(capabilities(each)))
                .set("StorageType", CIMValue(storageType(each.medium)))
                .set("MaxMediaSize", kilobytes(each.sectors))
                .set("_HR_DEVICE_INDEX", CIMValue(each.deviceIndex))
                .set("OperationalStatus", operationalStatus(each.isRunning))
                .set("Errors", each.errors)
                .build();
        });
    }

private:
    const ClassDeclaration m_declaration{"QAV_MediaAccessDevice",
                                         {{"CreationClassName", CIMDataType::STRING, Role::key},
                                          {"DeviceID", CIMDataType::STRING, Role::key},
                                          {"Capabilities", CIMDataType::UINT16, Role::state, true},
                                          {"StorageType", CIMDataType::UINT16},
                                          {"MaxMediaSize", CIMDataType::UINT64},
                                          {"_HR_DEVICE_INDEX", CIMDataType::UINT32},
                                          {"OperationalStatus", CIMDataType::UINT16, Role::state, true},
                                          {"Errors", CIMDataType::UINT32}}};
    const Host& m_host;
};

} // namespace

std::unique_ptr<Provider> makeMediaAccessDevice(const Host& host) {
    return std::make_unique<MediaAccessDevice>(host);
}

} // namespace cimom
