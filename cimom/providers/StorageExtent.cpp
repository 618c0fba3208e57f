#include "host/Storages.hpp"
#include "providers/Providers.hpp"
#include "providers/Storage.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

// Linux does not count the requests for storage that fail.
const ClassDeclaration& storageExtentClass() {
    static const ClassDeclaration declaration{"QAV_StorageExtent",
                                              {{"CreationClassName", CIMDataType::STRING, Role::key},
                                               {"DeviceID", CIMDataType::STRING, Role::key},
                                               {"StorageType", CIMDataType::UINT16},
                                               {"Purpose", CIMDataType::STRING},
                                               {"Blocksize", CIMDataType::UINT64},
                                               {"NumberOfBlocks", CIMDataType::UINT64},
                                               {"StorageUsed", CIMDataType::UINT64},
                                               {"AllocationFailures", CIMDataType::UINT32},
                                               {"_INDEX", CIMDataType::UINT32}}};
    return declaration;
}

/** An instance for memory, for swap space and for each local file system, as in hrStorageTable of RFC 2790.
 */
class StorageExtent : public Provider {
public:
    explicit StorageExtent(const Host& host)
        : m_host(host) {}

    const ClassDeclaration& declaration() const override { return storageExtentClass(); }

    InstanceSource instances() const override {
        return eachOf(storages(m_host), [this](const Storage& each) {
            const StorageSize size = sizeOf(each, m_host);
            return namedStorageExtent(each.id)
                .set("StorageType", CIMValue(static_cast<UInt16>(each.type)))
                .set("Purpose", CIMValue(each.description.c_str()))
                .set("Blocksize", size.unit)
                .set("NumberOfBlocks", size.size)
                .set("StorageUsed", size.used)
                .set("_INDEX", CIMValue(each.index))
                .build();
        });
    }

private:
    const Host& m_host;
};

} // namespace

InstanceBuilder namedStorageExtent(const std::string& id) {
    InstanceBuilder instance(storageExtentClass());
    instance.set("CreationClassName", CIMValue(storageExtentClass().name))
        .set("DeviceID", CIMValue(id.c_str()));
    return instance;
}

std::unique_ptr<Provider> makeStorageExtent(const Host& host) {
    return std::make_unique<StorageExtent>(host);
}

} // namespace cimom
