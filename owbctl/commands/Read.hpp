#ifndef OWBCTL_COMMANDS_READ_HPP
#define OWBCTL_COMMANDS_READ_HPP

#include "commands/Selection.hpp"
#include "formats/Format.hpp"

#include <string>
#include <vector>

/** The commands get and instance. */
namespace owbctl {

/** What to read, and what of it to show. */
struct GroupQuery {
    std::vector<long> groups;
    Selection selection;
};

/**
 * Reads each group, writes it in the given format and reports failed reads on standard error. A failure does
 * not end the command. Returns the exit status of the first failed read; exitFailed if all reads succeeded
 * but a selected row is in no group; else 0. Throws UsageError, as checkSelection() does, before anything is
 * read.
 */
int getGroups(const GroupQuery& query, Format& format);

/** Which instance to show, and how. */
struct InstanceQuery {
    /** Object path as OWB_getInstance() takes it: [namespace:]Class.Key="value". */
    std::string path;
    /** Groups whose properties are shown. */
    std::vector<long> groups;
    /** Row number to show the instance with; not negative. */
    long row;
};

/** Reads one instance as a row of each group, like getGroups(). Returns the exit status. */
int showInstance(const InstanceQuery& query, Format& format);

} // namespace owbctl
#endif
