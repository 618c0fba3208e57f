#ifndef CIMOM_HOST_RPM_DATABASE_HPP_INCLUDED
#define CIMOM_HOST_RPM_DATABASE_HPP_INCLUDED
#include "host/Host.hpp"
#include "host/SoftwarePackage.hpp"

#include "system/ChildAnswer.hpp"

#include <string>
#include <vector>

namespace cimom {

/** The files that a database of rpm(8) may consist of, whatever its format; most of them are absent. */
std::vector<std::string> rpmDatabaseFiles();

/**
 * Asks the host's /usr/bin/rpm for the installed packages, which may take seconds. It has no answer when the
 * program fails. Null when the host has no database.
 */
Question rpmQuestion(const Host& host);

/** The packages that rpm has listed. */
std::vector<SoftwarePackage> rpmPackages(const std::string& answer);

} // namespace cimom
#endif
