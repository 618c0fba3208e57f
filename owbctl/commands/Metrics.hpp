#ifndef OWBCTL_COMMANDS_METRICS_HPP
#define OWBCTL_COMMANDS_METRICS_HPP

#include "metrics/Exposition.hpp"
#include "output/Output.hpp"

#include <string>
#include <vector>

/** The command metrics. */
namespace owbctl {

/** The names of metrics::formats on the command line, in the same order. */
extern const std::vector<std::string> metricsFormatNames;

/** Which groups to read, and where to write their metrics. */
struct MetricsRequest {
    /** See agent::groupsNamed(); empty for all. Each names groups that have metrics, which a check of the
     * command line ensures. */
    std::vector<std::string> groups;
    /** One of metricsFormatNames. */
    std::string format;
    /** Directory of the textfile collector, which gets the file owb.prom; empty for the output. */
    std::string textfile;
};

/** Whether the groups that an argument names have metrics; else why not. For a check of the command line. */
std::string checkMeasured(const std::string& group);

/**
 * Reads groups and writes their metrics. A failed read is reported on standard error;
 * the metrics report it, too. Returns the exit status of the first failed read, else 0. Throws UsageError if
 * the format does not fit the file, and std::system_error if the file cannot be replaced: the old one remains
 * then.
 */
int writeMetrics(const MetricsRequest& request, Output& output);

} // namespace owbctl
#endif
