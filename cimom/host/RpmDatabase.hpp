#ifndef CIMOM_HOST_RPM_DATABASE_HPP_INCLUDED
#define CIMOM_HOST_RPM_DATABASE_HPP_INCLUDED
#include "host/Host.hpp"
#include "host/SoftwarePackage.hpp"

#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** The files that a database of rpm(8) may consist of, whatever its format; most of them are absent. */
std::vector<std::string> rpmDatabaseFiles();

/**
 * The installed packages as the host's /usr/bin/rpm lists them, which may take seconds. The host must have
 * a database. Absent when the program fails or has not ended after 30 s.
 */
std::optional<std::vector<SoftwarePackage>> rpmPackages(const Host& host);

} // namespace cimom
#endif
