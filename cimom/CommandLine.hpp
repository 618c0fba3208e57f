#ifndef CIMOM_COMMAND_LINE_HPP_INCLUDED
#define CIMOM_COMMAND_LINE_HPP_INCLUDED
#include "http/NetworkAddress.hpp"
#include "http/Settings.hpp"
#include "http/TlsOptions.hpp"
#include "state/StateFile.hpp"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cimom {

/** The options of the command line. */
struct Options {
    std::string socket = "/tmp/OpenWBEM_UDS";
    mode_t socketMode = 0666;
    std::vector<http::NetworkAddress> listen;
    /** Empty: no client on the network may write. */
    std::string users;
    /** Clients on the network must log in to read, too. Requires users. */
    bool requiresLogin = false;
    http::TlsOptions tls;
    /** The common name in the certificate of a client names a user. Requires users and client authorities. */
    bool takesUserFromCertificate = false;
    std::string state = defaultStatePath();
    /** All writes are refused, and there is no state file. */
    bool keepsNoState = false;
    /** Empty: no site files. */
    std::string instances;
    std::string root = "/";
    http::Limits limits;
    /** Time for current requests to end after SIGTERM. */
    std::chrono::seconds stopTime{5};
    bool isVerbose = false;
};

/** Reads the command line. Exits the process after --help, --version and errors, which it prints. */
Options readCommandLine(int argc, char** argv);

} // namespace cimom
#endif
