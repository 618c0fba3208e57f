#ifndef CIMOM_HOST_SOFTWARE_PACKAGE_HPP_INCLUDED
#define CIMOM_HOST_SOFTWARE_PACKAGE_HPP_INCLUDED
#include <ctime>
#include <optional>
#include <string>

namespace cimom {

/** What an installed package is for, as far as its package manager says so. */
enum class SoftwareKind : unsigned char { unknown, application, operatingSystem, firmware };

/** A package that is installed. There are thousands of them, so a record holds nothing twice. */
struct SoftwarePackage {
    /**
     * Identifies it among the others and stays the same as long as it is installed: "dpkg:" with name and
     * architecture, "rpm:" with name, version and architecture, since rpm may have several versions.
     */
    std::string id;
    std::string name;
    std::string version;
    /** When it, or the version that is there now, was installed. */
    std::optional<std::timespec> installed;
    SoftwareKind kind;
};

} // namespace cimom
#endif
