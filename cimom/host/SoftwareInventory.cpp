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

SoftwareInventory::SoftwareInventory(const Host& host, boost::asio::io_context& io)
    : m_host(host)
    , m_rpm(io, {answerTime, packagesKept, answerKept}) {}

std::shared_ptr<const SoftwareInventory::Packages> SoftwareInventory::packages() {
    // Looked at before the reading: what changes in between is read again the next time.
    const FileVersions versions = sourceVersions();
    if (m_host.fileVersion(dpkgStatusFile))
        readDpkg(versions);
    else
        readRpm(versions);
    return m_packages ? m_packages : std::make_shared<const Packages>();
}

void SoftwareInventory::readDpkg(const FileVersions& versions) {
    if (m_packages && versions == m_dpkgVersions)
        return;
    std::optional<Packages> read = dpkgPackages(m_host);
    m_packages = read ? std::make_shared<const Packages>(ordered(std::move(*read))) : nullptr;
    m_dpkgVersions = versions;
    m_rpmList = nullptr;
}

void SoftwareInventory::readRpm(const FileVersions& versions) {
    const Question question = rpmQuestion(m_host);
    const std::shared_ptr<const std::string> list = question ? m_rpm.get(versions, question) : nullptr;
    if (list && list == m_rpmList)
        return;
    m_packages = list ? std::make_shared<const Packages>(ordered(rpmPackages(*list))) : nullptr;
    m_dpkgVersions.clear();
    m_rpmList = list;
}

FileVersions SoftwareInventory::sourceVersions() const {
    FileVersions versions{m_host.fileVersion(dpkgStatusFile)};
    for (const std::string& file : rpmDatabaseFiles())
        versions.push_back(m_host.fileVersion(file));
    return versions;
}

} // namespace cimom
