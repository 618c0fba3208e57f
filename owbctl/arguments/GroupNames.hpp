#ifndef OWBCTL_ARGUMENTS_GROUPNAMES_HPP
#define OWBCTL_ARGUMENTS_GROUPNAMES_HPP

#include <string>
#include <vector>

namespace owbctl {

/** Stands for all groups, by their numbers. */
constexpr const char* allGroups = "all";

/** The groups that a word names: by a number from 0 to OWB_MAX_GROUP, by their class in any case of letters,
 * or allGroups. None for another word. */
std::vector<long> groupsNamed(const std::string& word);

/** The groups that all the words name, in their order, as often as they are named. */
std::vector<long> groupsNamed(const std::vector<std::string>& words);

} // namespace owbctl
#endif
