#ifndef EXPORTER_EXPORTER_HPP
#define EXPORTER_EXPORTER_HPP

#include "exporter/CommandLine.hpp"

namespace exporter {

/**
 * Serves metrics until SIGTERM or SIGINT. Current requests then have Options::stopTime to end. Throws
 * std::exception, with a message for people, if the server cannot start.
 */
void serve(const Options& options);

} // namespace exporter
#endif
