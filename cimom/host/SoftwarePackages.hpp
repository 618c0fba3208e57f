#ifndef CIMOM_HOST_SOFTWARE_PACKAGES_HPP_INCLUDED
#define CIMOM_HOST_SOFTWARE_PACKAGES_HPP_INCLUDED
#include "host/Host.hpp"
#include "service/ChildAnswer.hpp"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** What a package is for, if its package manager reports it. */
enum class SoftwareKind : unsigned char { unknown, application, operatingSystem, firmware };

/** An installed package. There are thousands of them, so the record is compact. */
struct SoftwarePackage {
    /**
     * Identifies the package and does not change while it is installed: "dpkg:" with name and architecture,
     * or "rpm:" with name, version and architecture, because rpm may install several versions.
     */
    std::string id;
    std::string name;
    std::string version;
    /** When the present version was installed. */
    std::optional<std::timespec> installed;
    SoftwareKind kind;
};

/** The file in which dpkg(1) keeps the state of all packages. dpkg replaces it at each change. */
extern const char* const dpkgStatusFile;

/**
 * The packages that dpkg reports as installed, in its order. The installation time is that of the list of a
 * package's files, which dpkg writes when it installs the package.
 */
std::vector<SoftwarePackage> dpkgPackages(const Host& host);

/** The files of a database of rpm(8) in any of its formats. Most of them do not exist. */
std::vector<std::string> rpmDatabaseFiles();

/**
 * Asks /usr/bin/rpm of the host for the installed packages, which may take seconds. There is no answer if rpm
 * fails. Null if the host has no database.
 */
service::Question rpmQuestion(const Host& host);

/** The packages in an answer of rpm. */
std::vector<SoftwarePackage> rpmPackages(const std::string& answer);

} // namespace cimom
#endif
