#ifndef OWBCTL_COMMANDS_READ_HPP
#define OWBCTL_COMMANDS_READ_HPP

#include "formats/Format.hpp"

#include <optional>
#include <string>
#include <vector>

/** The commands get and instance. */
namespace owbctl {

/** What to read, and what of it to show. */
struct GroupQuery {
    std::vector<long> groups;
    /** Names or nominators of the properties to show; empty for all. */
    std::vector<std::string> properties;
    /** The only row to show; nothing for all. */
    std::optional<long> row;
};

/**
 * Reads each group, writes it in the given format and reports failed reads on standard error, where they name
 * `url`. A failure does not end the command. Returns the exit status of the first failed read; exitFailed if
 * all reads succeeded but no group has the row; else 0. Throws UsageError for a property that none of the
 * groups has, before anything is read.
 */
int getGroups(const GroupQuery& query, Format& format, const std::string& url);

/** Which instance to show, and how. */
struct InstanceQuery {
    /** Object path as OWB_getInstance() takes it: [namespace:]Class.Key="value". */
    std::string path;
    /** Groups whose properties are shown. */
    std::vector<long> groups;
    /** Row number to show the instance with; not negative. */
    long row;
};

/** Reads one instance as a row of each group, like getGroups(). A failure adds a hint that the path may be
 * the cause. Returns the exit status. */
int showInstance(const InstanceQuery& query, Format& format, const std::string& url);

} // namespace owbctl
#endif
