#include "agent/Change.hpp"

#include "agent/Items.hpp"

namespace owbctl {
namespace {

std::vector<std::string> valuesIn(const Row& row, const ExtItem* description) {
    const Property* const property = row.find(description);
    return property == nullptr ? std::vector<std::string>() : property->values;
}

std::optional<std::string> valueFor(const ExtItem* description, const std::vector<Assignment>& assignments) {
    for (const Assignment& assignment : assignments) {
        if (assignment.description == description)
            return assignment.value;
    }
    return std::nullopt;
}

} // namespace

std::vector<Change> compare(long group, const Row& before, const Row& after,
                            const std::vector<Assignment>& assignments) {
    std::vector<Change> changes;
    for (const ExtItem* description : propertiesOf(group))
        changes.push_back({description, valueFor(description, assignments), valuesIn(before, description),
                           valuesIn(after, description)});
    return changes;
}

} // namespace owbctl
