#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"
#include "host/SoftwareInventory.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** CIM_SoftwareIdentity.Classifications: one value. */
std::optional<UInt16Array> classifications(SoftwareKind kind) {
    switch (kind) {
    case SoftwareKind::application:
        return UInt16Array(1, UInt16{4}); // application software
    case SoftwareKind::operatingSystem:
        return UInt16Array(1, UInt16{8}); // operating system
    case SoftwareKind::firmware:
        return UInt16Array(1, UInt16{10}); // firmware
    case SoftwareKind::unknown:
        break;
    }
    return std::nullopt;
}

/** An instance for each installed package. */
class SoftwareIdentity : public Provider {
public:
    SoftwareIdentity(const Host& host, boost::asio::io_context& io)
        : m_inventory(host, io) {}

    const ClassDeclaration& declaration() const override { return m_declaration; }

    InstanceSource instances() const override {
        return [this, packages = m_inventory.packages(), next = std::size_t{0}]() mutable {
            return next < packages->size() ? instance((*packages)[next++]) : CIMInstance(CIMNULL);
        };
    }

private:
    CIMInstance instance(const SoftwarePackage& package) const {
        InstanceBuilder instance(m_declaration);
        // RFC 2790, hrSWInstalledName: what it is, and its version.
        instance.set("InstanceID", CIMValue(package.id.c_str()))
            .set("Name", CIMValue((package.name + "-" + package.version).c_str()))
            .set("Classifications", classifications(package.kind));
        if (package.installed) {
            const auto microseconds = static_cast<UInt32>(package.installed->tv_nsec / 1000);
            instance.set("InstalledDate",
                         CIMValue(CIMDateTime(DateTime(package.installed->tv_sec, microseconds))));
        }
        return instance.build();
    }

    const ClassDeclaration m_declaration{"QAV_SoftwareIdentity",
                                         {{"InstanceID", CIMDataType::STRING, Role::key},
                                          {"Name", CIMDataType::STRING},
                                          {"Classifications", CIMDataType::UINT16, Role::state, true},
                                          {"InstalledDate", CIMDataType::DATETIME}}};
    mutable SoftwareInventory m_inventory; // which remembers what it has read
};

} // namespace

std::unique_ptr<Provider> makeSoftwareIdentity(const Host& host, boost::asio::io_context& io) {
    return std::make_unique<SoftwareIdentity>(host, io);
}

} // namespace cimom
