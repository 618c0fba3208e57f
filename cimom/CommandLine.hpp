#ifndef CIMOM_COMMAND_LINE_HPP_INCLUDED
#define CIMOM_COMMAND_LINE_HPP_INCLUDED
#include "http/Limits.hpp"
#include "http/NetworkAddress.hpp"
#include "state/DefaultPath.hpp"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cimom {

/** What the command line says. */
struct Options {
    std::string socket = "/tmp/OpenWBEM_UDS";
    mode_t socketMode = 0666;
    std::vector<NetworkAddress> listen;
    /** Empty: nobody on the network may write. */
    std::string users;
    /** Clients on the network must log in to read, too. Only with users. */
    bool requiresLogin = false;
    std::string state = defaultStatePath();
    /** All writes are refused, and there is no state file. */
    bool keepsNoState = false;
    /** Empty: there are no site files. */
    std::string instances;
    std::string root = "/";
    Limits limits;
    /** For the answers under way when the process is told to end. */
    std::chrono::seconds stopTime{5};
    bool isVerbose = false;
};

/**
 * Reads the command line. Prints what it asks for, or what is wrong with it, and exits the process when there
 * is nothing else to do.
 */
Options readCommandLine(int argc, char** argv);

} // namespace cimom
#endif
