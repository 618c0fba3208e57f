#include "host/SoftwareInventory.hpp"

#include "SoftwareType.hpp"
#include "system/Program.hpp"

#include <algorithm>
#include <optional>

namespace cimom {
namespace {

/** Sorts packages by name and removes duplicates. */
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

const char* const program = "/kq/bin/softinv";

std::vector<std::string> linesOf(const std::string& text) {
    const std::vector<std::string_view> all = lines(text);
    return std::vector<std::string>(all.begin(), all.end());
}

} // namespace

SoftwareInventory::SoftwareInventory(const Host& host, boost::asio::io_context& io)
    : m_host(host)
    , m_rpm(io, {answerTimeout, packagesLifetime, answerLifetime}) {}

std::shared_ptr<const SoftwareInventory::Packages> SoftwareInventory::packages() {
    // Before the packages are read: a change in between causes another read the next time.
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
    m_packages = std::make_shared<const Packages>(ordered(dpkgPackages(m_host)));
    m_dpkgVersions = versions;
    m_rpmList = nullptr;
}

void SoftwareInventory::readRpm(const FileVersions& versions) {
    const service::Question question = rpmQuestion(m_host);
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

SoftwareTypes::SoftwareTypes(const std::string& printed)
    : m_lines(linesOf(printed)) {
    for (const std::string& line : m_lines)
        m_texts.push_back(line.c_str());
    m_texts.push_back(nullptr);
}

unsigned short SoftwareTypes::of(const OpenWBEM::String& name) const {
    return inventory::softwareType(m_texts.data(), name);
}

std::shared_ptr<const SoftwareTypes> SoftwareTypeSource::types() {
    const std::optional<FileVersion> version = m_host.fileVersion(program);
    if (!version)
        return nullptr;
    const std::string path = m_host.realPath(program);
    // The output of a program that fails is used too, as QAV_UnixProcessAPI does.
    const auto printed = m_answer.get({version}, [path] { return outputOf({path}).text; });
    return printed ? std::make_shared<const SoftwareTypes>(*printed) : nullptr;
}

} // namespace cimom
