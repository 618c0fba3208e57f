#include "arguments/GroupNames.hpp"

#include "agent/Items.hpp"
#include "agent/Number.hpp"

namespace owbctl {

std::vector<long> groupsNamed(const std::string& word) {
    if (word == allGroups)
        return everyGroup();
    const auto number = decimal(word);
    if (!number)
        return groupsOfClass(word);
    return *number <= OWB_MAX_GROUP ? std::vector<long>{*number} : std::vector<long>();
}

std::vector<long> groupsNamed(const std::vector<std::string>& words) {
    std::vector<long> groups;
    for (const std::string& word : words) {
        const std::vector<long> named = groupsNamed(word);
        groups.insert(groups.end(), named.begin(), named.end());
    }
    return groups;
}

} // namespace owbctl
