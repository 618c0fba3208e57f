#ifndef CIMOM_HOST_DPKG_STATUS_HPP_INCLUDED
#define CIMOM_HOST_DPKG_STATUS_HPP_INCLUDED
#include "host/Host.hpp"
#include "host/SoftwarePackage.hpp"

#include <vector>

namespace cimom {

/** The file that dpkg(1) keeps the state of all packages in; it replaces the file at each change. */
extern const char* const dpkgStatusFile;

/**
 * The packages that the file shows as installed, in its order. A package's files and with them the list of
 * their names are written when it is installed, so the age of the list is that of the package.
 */
std::vector<SoftwarePackage> dpkgPackages(const Host& host);

} // namespace cimom
#endif
