#ifndef CIMOM_HOST_SOFTWARE_INVENTORY_HPP_INCLUDED
#define CIMOM_HOST_SOFTWARE_INVENTORY_HPP_INCLUDED
#include "OW_String.hpp"
#include "host/CachedAnswer.hpp"
#include "host/Host.hpp"
#include "host/SoftwarePackages.hpp"

#include <memory>
#include <string>
#include <vector>

namespace cimom {

/** How long the list of rpm is cached, unless its database changes. */
inline constexpr std::chrono::hours packagesLifetime{24};

/**
 * The installed packages of a host: those of dpkg(1) or, without dpkg, those of rpm(8). They are read again
 * only if a file of the package manager has changed.
 */
class SoftwareInventory {
public:
    using Packages = std::vector<SoftwarePackage>;

    /**
     * @param host must outlive the inventory
     * @param io see CachedAnswer
     */
    SoftwareInventory(const Host& host, boost::asio::io_context& io);

    /** All packages sorted by name; none if they cannot be read. Throws AnswerPending while rpm runs. */
    std::shared_ptr<const Packages> packages();

private:
    FileVersions sourceVersions() const;
    void readDpkg(const FileVersions& versions);
    void readRpm(const FileVersions& versions);

    const Host& m_host;
    CachedAnswer m_rpm;
    std::shared_ptr<const Packages> m_packages;   // null until read
    FileVersions m_dpkgVersions;                  // of the files that m_packages comes from; empty: rpm
    std::shared_ptr<const std::string> m_rpmList; // that m_packages comes from; null: dpkg
};

/** The types of programs that a software inventory printed. */
class SoftwareTypes {
public:
    explicit SoftwareTypes(const std::string& printed);
    SoftwareTypes(const SoftwareTypes&) = delete;
    SoftwareTypes& operator=(const SoftwareTypes&) = delete;

    /** RFC 2790, hrSWRunType, of a program by its name. */
    unsigned short of(const OpenWBEM::String& name) const;

private:
    const std::vector<std::string> m_lines;
    std::vector<const char*> m_texts; // pointers to the lines, and a null pointer
};

/** Runs /kq/bin/softinv of the host; see CachedAnswer. */
class SoftwareTypeSource {
public:
    /**
     * @param host must outlive this object
     * @param io see CachedAnswer
     */
    SoftwareTypeSource(const Host& host, boost::asio::io_context& io)
        : m_host(host)
        , m_answer(io) {}

    /** What it printed; null if it does not exist or cannot be run. Throws AnswerPending while it runs. */
    std::shared_ptr<const SoftwareTypes> types();

private:
    const Host& m_host;
    CachedAnswer m_answer;
};

} // namespace cimom
#endif
