#include "host/SoftwareInventory.hpp"
#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

const ClassDeclaration softwareClass{"QAV_SoftwareIdentity",
                                     {{"InstanceID", CIMDataType::STRING, Role::key},
                                      {"Name", CIMDataType::STRING},
                                      {"Classifications", CIMDataType::UINT16, Role::state, true},
                                      {"InstalledDate", CIMDataType::DATETIME}}};

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

CIMInstance packageInstance(const SoftwarePackage& package) {
    InstanceBuilder instance(softwareClass);
    // RFC 2790, hrSWInstalledName: name and version.
    instance.set("InstanceID", CIMValue(package.id.c_str()))
        .set("Name", CIMValue((package.name + "-" + package.version).c_str()))
        .set("Classifications", classifications(package.kind));
    if (package.installed)
        instance.set("InstalledDate", CIMValue(localTime(*package.installed)));
    return instance.build();
}

/** An instance for each installed package. Shares the list with the inventory: it may have thousands of them.
 */
class Packages : public InstanceSource {
public:
    explicit Packages(std::shared_ptr<const SoftwareInventory::Packages> packages)
        : m_packages(std::move(packages)) {}

    CIMInstance next() override {
        return m_next < m_packages->size() ? packageInstance((*m_packages)[m_next++]) : CIMInstance(CIMNULL);
    }

private:
    const std::shared_ptr<const SoftwareInventory::Packages> m_packages;
    std::size_t m_next = 0;
};

} // namespace

std::vector<Provider> softwareProviders(const Host& host, boost::asio::io_context& io) {
    const auto inventory = std::make_shared<SoftwareInventory>(host, io);
    return {{&softwareClass, [inventory] { return std::make_unique<Packages>(inventory->packages()); }}};
}

} // namespace cimom
