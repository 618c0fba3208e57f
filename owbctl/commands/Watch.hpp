#ifndef OWBCTL_COMMANDS_WATCH_HPP
#define OWBCTL_COMMANDS_WATCH_HPP

#include "formats/Format.hpp"
#include "output/Output.hpp"

#include <optional>
#include <string>

namespace owbctl {

/** What to read repeatedly. */
struct WatchRequest {
    long group;
    /** Seconds from the start of one reading to the next. A longer reading is followed by the next at once.
     */
    double interval;
    /** Number of readings; nothing for no end. */
    std::optional<long> count;
};

/**
 * The command watch: reads a group at intervals and writes each sample, compared with the previous one.
 * Reports a failed reading on standard error and goes on. Returns the exit status of the last reading.
 */
int watchGroup(const WatchRequest& request, Format& format, const Output& output, const std::string& url);

} // namespace owbctl
#endif
