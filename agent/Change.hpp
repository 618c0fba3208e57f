#ifndef AGENT_CHANGE_HPP
#define AGENT_CHANGE_HPP

#include "agent/Group.hpp"

#include <optional>
#include <string>
#include <vector>

namespace owbctl {

/** A value that a property is to get. */
struct Assignment {
    const ExtItem* description;
    std::string value;
};

/** One property of a row around a write: what it was, what was asked of it, what it is. */
struct Change {
    const ExtItem* description;
    /** Nothing for a property that the write did not name. */
    std::optional<std::string> asked;
    /** None for a null value. */
    std::vector<std::string> before;
    std::vector<std::string> after;

    bool isChanged() const { return before != after; }

    /** Whether the property was to get a value and does not have it. An array of just this value has it. */
    bool isRefused() const { return asked && after != std::vector<std::string>{*asked}; }

    /** Whether the property was not named and lost its value. */
    bool isCleared() const { return !asked && !before.empty() && after.empty(); }
};

/** Compares a row before and after a write: a Change for each property of `group`, in the order of
 * ExtItemList, also for one that stayed as it was. */
std::vector<Change> compare(long group, const Row& before, const Row& after,
                            const std::vector<Assignment>& assignments);

} // namespace owbctl
#endif
