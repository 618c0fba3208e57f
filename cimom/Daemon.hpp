#ifndef CIMOM_DAEMON_HPP_INCLUDED
#define CIMOM_DAEMON_HPP_INCLUDED
#include "CommandLine.hpp"

namespace cimom {

/**
 * Serves the host's data until SIGTERM or SIGINT. Current requests then have Options::stopTime to end. Throws
 * std::exception, with a message for people, if the server cannot start.
 */
void serve(const Options& options);

} // namespace cimom
#endif
