#ifndef AGENT_GROUP_HPP
#define AGENT_GROUP_HPP

#include "agent/Queue.hpp"

#include <owb.h>

#include <functional>
#include <string>
#include <vector>

namespace owbctl {

/** The values of one property in one row; more than one for an array. At least one. */
struct Property {
    const ExtItem* description;
    std::vector<std::string> values;
};

/** One instance: its row number, and its properties in the order of ExtItemList. Null properties are left
 * out. */
struct Row {
    long number;
    std::vector<Property> properties;

    /** The property described by `description`, or null when the row has none. Owned by the row. */
    const Property* find(const ExtItem* description) const;
};

/** What one read of a group gave: status of the library, and the rows that arrived, by ascending number. */
struct Group {
    long number;
    const char* className;
    long status;
    std::vector<Row> rows;

    /** The row of the given number, or null when none arrived. Owned by the group. */
    const Row* find(long row) const;
};

/** The rows that the items of a queue make up, all of them items of `group`; by ascending number. */
std::vector<Row> rowsOf(long group, const Queue& queue);

/** Reads items of a group into a queue and returns the status of the library. */
using Read = std::function<long(_qHead* queue)>;

/**
 * Reads a group with `read`, and once more on a fresh connection when the first try fails for want of a good
 * one. Only what the last try gave is in the result. Blocks until the reply is complete.
 */
Group readGroup(long number, const Read& read);

/** Reads group `number` (0 to OWB_MAX_GROUP) from the object manager. */
Group readGroup(long number);

} // namespace owbctl
#endif
