#ifndef OWBCTL_COMMANDS_WATCHCOMMAND_HPP
#define OWBCTL_COMMANDS_WATCHCOMMAND_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

#include <optional>
#include <string>

namespace owbctl {

/** What to read again and again. */
struct WatchRequest {
    long group;
    /** Seconds from one reading to the next; one that takes longer is followed by the next at once. */
    double interval;
    /** How often; without end when there is none. */
    std::optional<long> count;
};

/**
 * Reads a group at intervals and writes each sample beside the one before. A reading that failed is reported
 * on standard error, and the next one is made all the same. Returns the exit status of the last reading.
 */
int watchGroup(const WatchRequest& request, Format& format, const Output& output, const std::string& url);

} // namespace owbctl
#endif
