#ifndef AGENT_ITEMS_HPP
#define AGENT_ITEMS_HPP

#include <owb.h>

#include <string>
#include <vector>

namespace owbctl {

/** Rows of ExtItemList that belong to `group`, in the order of the list; none for an unknown group. */
std::vector<const ExtItem*> propertiesOf(long group);

/** The row of ExtItemList for a property of `group`, given by its name in any case of letters or by its
 * nominator; null when the group has none. */
const ExtItem* findProperty(long group, const std::string& nameOrNominator);

/** Every group, 0 to OWB_MAX_GROUP. */
std::vector<long> everyGroup();

/** Names of the properties by which an object manager finds the instance when `group` is written; none for a
 * group that has none. */
std::vector<std::string> keysOf(long group);

/** The groups whose class is `className` in any case of letters, by ascending number. */
std::vector<long> groupsOfClass(const std::string& className);

} // namespace owbctl
#endif
