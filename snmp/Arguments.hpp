#ifndef SNMP_ARGUMENTS_HPP
#define SNMP_ARGUMENTS_HPP

#include "snmp/ManagedObjects.hpp"
#include "snmp/session/Settings.hpp"

namespace snmp {

/** What the command line sets. */
struct Arguments {
    Settings session;
    ObjectSettings objects;
};

/** Reads the command line. Exits the process after --help, --version and errors, which it prints. */
Arguments readArguments(int argc, char** argv);

} // namespace snmp
#endif
