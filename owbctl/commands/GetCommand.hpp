#ifndef OWBCTL_COMMANDS_GETCOMMAND_HPP
#define OWBCTL_COMMANDS_GETCOMMAND_HPP

#include "formats/Format.hpp"

#include <optional>
#include <string>
#include <vector>

namespace owbctl {

/** What to read, and what of it to show. */
struct GroupQuery {
    std::vector<long> groups;
    /** Names or nominators of the properties to show; all of them when empty. */
    std::vector<std::string> properties;
    /** The one row to show; all of them when there is none. */
    std::optional<long> row;
};

/**
 * Reads and writes groups as showGroups() does. Returns its exit status, or exitFailed when all went well but
 * no group has the row. Throws UsageError for a property that none of the groups has, before anything is
 * read.
 */
int getGroups(const GroupQuery& query, Format& format, const std::string& url);

} // namespace owbctl
#endif
