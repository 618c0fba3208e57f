#ifndef METRICS_GROUP_FAMILIES_HPP
#define METRICS_GROUP_FAMILIES_HPP

#include "agent/Group.hpp"
#include "metrics/Family.hpp"

#include <cstddef>
#include <vector>

namespace metrics {

/** The metrics of a group. */
struct GroupFamilies {
    /** Families without samples are missing. No other group has families of these names. */
    std::vector<Family> families;
    /** Rows that were left out because an earlier row has the same labels. */
    std::size_t droppedRows = 0;
};

/** Converts a group that has metrics, see measuredGroups(). A group that was not read has no families. */
GroupFamilies familiesOf(const agent::Group& group);

} // namespace metrics
#endif
