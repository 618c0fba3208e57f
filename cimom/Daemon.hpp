#ifndef CIMOM_DAEMON_HPP_INCLUDED
#define CIMOM_DAEMON_HPP_INCLUDED
#include "CommandLine.hpp"

namespace cimom {

/**
 * Serves the host's data until SIGTERM or SIGINT comes; the answers that are under way then have
 * Options::stopTime to be finished. Throws std::exception, which says what failed and why, when it cannot
 * begin.
 */
void serve(const Options& options);

} // namespace cimom
#endif
