#ifndef AGENT_GROUP_HPP
#define AGENT_GROUP_HPP

#include "agent/Catalogue.hpp"
#include "agent/Queue.hpp"
#include "agent/Reason.hpp"

#include <owb.h>

#include <optional>
#include <string>
#include <vector>

/** Reads groups. All functions block until the reply is complete and must run in the thread that calls the
 * library: its client is one per process. */
namespace agent {

/** The values of one attribute in one row: at least one, several for an array. */
struct Property {
    const Attribute* attribute;
    std::vector<std::string> values;
};

/** One instance: its row number, and its properties in the order of the catalogue, or of Group::selected.
 * Null properties are absent. */
struct Row {
    long number;
    std::vector<Property> properties;

    /** The property of an attribute; null if the row has none. Owned by the row. */
    const Property* find(const Attribute* attribute) const;
};

/** Result of one read: status of the library, and the rows that arrived, by ascending number. Rows without
 * any value are absent. */
struct Group {
    long number;
    const char* className;
    long status;
    std::vector<Row> rows;
    /** Why the read failed; empty if the status is OWB_DONE. */
    Failure failure = {};
    /** The attributes to show, in their order, if only these were asked for. Rows then have no others. */
    std::optional<std::vector<const Attribute*>> selected = {};

    /** The row of a number; null if it did not arrive. Owned by the group. */
    const Row* find(long row) const;
};

/** The rows that the items of `group` in a queue form, by ascending number. */
std::vector<Row> rowsOf(long group, const Queue& queue);

/**
 * Reads group `number` (0 to highestGroup) from the object manager, with OWB_getGroup(). A read that fails is
 * repeated once, on a new connection, by the library's client alone: it shows why. If that succeeds, the
 * group is read again. The result holds the rows of the last attempt only. Reports errors by Group::status
 * and Group::failure.
 */
Group readGroup(long number);

/**
 * Reads the instance that an object path names, with OWB_getInstance(), like readGroup().
 *
 * @param number group whose properties are read
 * @param path as OWB_getInstance() takes it: [namespace:]Class.Key="value"
 * @param row number of the row of the result; not negative
 */
Group readInstance(long number, const std::string& path, long row);

} // namespace agent
#endif
