#ifndef OWBCTL_COMMANDS_SELECTION_HPP
#define OWBCTL_COMMANDS_SELECTION_HPP

#include "agent/Sample.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** Which rows and properties of groups a command shows. */
struct Selection {
    /** Names or nominators of properties, in the order to show them; empty for all. */
    std::vector<std::string> properties;
    /** Row numbers; empty for all. */
    std::vector<long> rows;
    /** NAME=VALUE; a row has to meet all. NAME is a property or a nominator. The condition holds if a value
     * of the property is the text VALUE, or a code of this name in any case of letters. */
    std::vector<std::string> conditions;
};

/** Throws UsageError for a condition without "=", and for a property that none of the groups has. */
void checkSelection(const Selection& selection, const std::vector<long>& groups);

/** Removes rows and properties that are not selected, and rows that become empty. Sets Group::selected. */
void select(agent::Group& group, const Selection& selection);

/** Removes only the rows that are not selected. */
void selectRows(agent::Group& group, const Selection& selection);

/** Removes only properties that are not selected from the rows and the group of a sample, not from vanished
 * rows. Sets Group::selected. */
void selectProperties(agent::Sample& sample, const Selection& selection);

/** Whether a group that was read has a row with a value that is selected. Conditions do not count. */
bool hasRow(const agent::Group& group, long row, const Selection& selection);

} // namespace owbctl
#endif
