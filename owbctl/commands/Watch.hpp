#ifndef OWBCTL_COMMANDS_WATCH_HPP
#define OWBCTL_COMMANDS_WATCH_HPP

#include "commands/Selection.hpp"
#include "formats/Format.hpp"
#include "output/Output.hpp"

#include <optional>
#include <string>
#include <vector>

namespace owbctl {

/** What to read repeatedly. */
struct WatchRequest {
    std::vector<long> groups;
    Selection selection;
    /** Seconds from the start of one reading to the next. A longer reading is followed by the next at once.
     */
    double interval;
    /** Number of readings; nothing for no end. */
    std::optional<long> count;
    /** Whether to write only what changed since the previous reading. */
    bool onlyChanges;
};

/**
 * The command watch: reads groups at intervals and writes each sample, compared with the previous one. The
 * key q ends it on a terminal. Reports a failed reading on standard error and goes on. Returns the exit
 * status of the last reading of the groups, that of the first failure. Throws UsageError, as checkSelection()
 * does.
 */
int watchGroups(const WatchRequest& request, Format& format, const Output& output);

} // namespace owbctl
#endif
