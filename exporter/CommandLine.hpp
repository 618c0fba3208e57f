#ifndef EXPORTER_COMMAND_LINE_HPP
#define EXPORTER_COMMAND_LINE_HPP

#include "http/NetworkAddress.hpp"
#include "http/TlsOptions.hpp"

#include <chrono>
#include <string>
#include <vector>

namespace exporter {

/** The options of the command line. */
struct Options {
    /** Without TLS. Not both these and those of `tls` are empty. */
    std::vector<http::NetworkAddress> listen;
    http::TlsOptions tls;
    /** Of the object manager. */
    std::string url;
    /** Groups that have metrics, by ascending number, each once. */
    std::vector<long> groups;
    /** A snapshot that is younger is served again. */
    std::chrono::milliseconds maxAge;
    /** Time limit of a scrape. */
    std::chrono::milliseconds timeLimit;
    /** Time for current requests to end after SIGTERM. */
    std::chrono::seconds stopTime{5};
    bool isVerbose = false;
};

/** Reads the command line. Exits the process after --help, --version and errors, which it prints. */
Options readCommandLine(int argc, char** argv);

} // namespace exporter
#endif
