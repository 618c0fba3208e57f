#ifndef CIMOM_HOST_SOFTWARE_INVENTORY_HPP_INCLUDED
#define CIMOM_HOST_SOFTWARE_INVENTORY_HPP_INCLUDED
#include "host/Host.hpp"
#include "host/SoftwarePackage.hpp"

#include <memory>
#include <optional>
#include <vector>

namespace cimom {

/**
 * The packages that are installed on a host: those of dpkg(1) or, where that keeps none, of rpm(8). They
 * are read again only when a file that tells them has changed.
 */
class SoftwareInventory {
public:
    using Packages = std::vector<SoftwarePackage>;

    /** @param host must outlive the inventory */
    explicit SoftwareInventory(const Host& host);

    /** All packages in the order of their names; none when they cannot be read. */
    std::shared_ptr<const Packages> packages();

private:
    using Versions = std::vector<std::optional<FileVersion>>;
    Versions sourceVersions() const;

    const Host& m_host;
    std::shared_ptr<const Packages> m_packages; // null until they have been read
    Versions m_versions;                        // of the files that m_packages were read from
};

} // namespace cimom
#endif
