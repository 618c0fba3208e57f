#ifndef CIMOM_HOST_SOFTWARE_INVENTORY_HPP_INCLUDED
#define CIMOM_HOST_SOFTWARE_INVENTORY_HPP_INCLUDED
#include "host/Host.hpp"
#include "host/KeptAnswer.hpp"
#include "host/SoftwarePackage.hpp"

#include <memory>
#include <optional>
#include <vector>

namespace cimom {

/** How long what rpm has listed is kept, as long as its database stays the same. */
inline constexpr std::chrono::hours packagesKept{24};

/**
 * The packages that are installed on a host: those of dpkg(1) or, where that keeps none, of rpm(8). They
 * are read again only when a file that tells them has changed.
 */
class SoftwareInventory {
public:
    using Packages = std::vector<SoftwarePackage>;

    /**
     * @param host must outlive the inventory
     * @param io see KeptAnswer
     */
    SoftwareInventory(const Host& host, boost::asio::io_context& io);

    /** All packages in the order of their names; none when they cannot be read. Throws AnswerPending while
     * rpm is asked. */
    std::shared_ptr<const Packages> packages();

private:
    FileVersions sourceVersions() const;
    void readDpkg(const FileVersions& versions);
    void readRpm(const FileVersions& versions);

    const Host& m_host;
    KeptAnswer m_rpm;
    std::shared_ptr<const Packages> m_packages; // null until they have been read
    FileVersions m_dpkgVersions; // of the files that m_packages were read from; empty: from rpm
    std::shared_ptr<const std::string> m_rpmList; // that m_packages were read from; null: from dpkg
};

} // namespace cimom
#endif
