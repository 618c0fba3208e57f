#include "agent/GroupNames.hpp"

#include "agent/Catalogue.hpp"
#include "util/Number.hpp"

#include <optional>
#include <sstream>

namespace agent {
namespace {

/** The groups from `first` to `last`; none if a number is missing or not that of a group. */
std::vector<long> groupsBetween(std::optional<long> first, std::optional<long> last) {
    std::vector<long> groups;
    if (!first || !last || *last > highestGroup)
        return groups;
    for (long group = *first; group <= *last; ++group)
        groups.push_back(group);
    return groups;
}

/** The groups that one element of a list names. */
std::vector<long> groupsOfElement(const std::string& element) {
    if (element == allGroups)
        return everyGroup();
    if (const auto group = groupOfName(element))
        return {*group};
    const std::vector<long> ofClass = groupsOfClass(element);
    if (!ofClass.empty())
        return ofClass;
    const std::size_t hyphen = element.find('-');
    const std::string first = element.substr(0, hyphen);
    const std::string last = hyphen == std::string::npos ? element : element.substr(hyphen + 1);
    return groupsBetween(util::decimal<long>(first), util::decimal<long>(last));
}

} // namespace

std::vector<long> groupsNamed(const std::string& argument) {
    std::vector<long> groups;
    std::istringstream elements(argument + ","); // a comma at the end is followed by an empty element
    for (std::string element; std::getline(elements, element, ',');) {
        const std::vector<long> named = groupsOfElement(element);
        if (named.empty())
            return {};
        groups.insert(groups.end(), named.begin(), named.end());
    }
    return groups;
}

std::vector<long> groupsNamed(const std::vector<std::string>& arguments) {
    std::vector<long> groups;
    for (const std::string& argument : arguments) {
        const std::vector<long> named = groupsNamed(argument);
        groups.insert(groups.end(), named.begin(), named.end());
    }
    return groups;
}

} // namespace agent
