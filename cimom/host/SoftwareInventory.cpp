#include "host/SoftwareInventory.hpp"

#include "host/DpkgStatus.hpp"
#include "host/RpmDatabase.hpp"

#include <algorithm>

namespace cimom {
namespace {

/** Each package once, in the order of the names. */
std::vector<SoftwarePackage> ordered(std::vector<SoftwarePackage> packages) {
    const auto isSame = [](const SoftwarePackage& a, const SoftwarePackage& b) { return a.id == b.id; };
    std::sort(packages.begin(), packages.end(),
              [](const SoftwarePackage& a, const SoftwarePackage& b) { return a.id < b.id; });
    packages.erase(std::unique(packages.begin(), packages.end(), isSame), packages.end());
    std::stable_sort(packages.begin(), packages.end(),
                     [](const SoftwarePackage& a, const SoftwarePackage& b) { return a.name < b.name; });
    packages.shrink_to_fit();
    return packages;
}

} // namespace

SoftwareInventory::SoftwareInventory(const Host& host)
    : m_host(host) {}

std::shared_ptr<const SoftwareInventory::Packages> SoftwareInventory::packages() {
    // Looked at before the reading: what changes in between is read again the next time.
    const Versions versions = sourceVersions();
    if (m_packages && versions == m_versions)
        return m_packages;
    std::optional<Packages> read;
    if (m_host.fileVersion(dpkgStatusFile))
        read = dpkgPackages(m_host);
    else
        read = rpmPackages(m_host);
    m_packages = read ? std::make_shared<const Packages>(ordered(std::move(*read))) : nullptr;
    m_versions = versions;
    return m_packages ? m_packages : std::make_shared<const Packages>();
}

SoftwareInventory::Versions SoftwareInventory::sourceVersions() const {
    Versions versions{m_host.fileVersion(dpkgStatusFile)};
    for (const std::string& file : rpmDatabaseFiles())
        versions.push_back(m_host.fileVersion(file));
    return versions;
}

} // namespace cimom
