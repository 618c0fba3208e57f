#ifndef AGENT_GROUP_NAMES_HPP
#define AGENT_GROUP_NAMES_HPP

#include <string>
#include <vector>

/** Groups as a user names them. */
namespace agent {

/** Names all groups. */
constexpr const char* allGroups = "all";

/**
 * The groups that an argument names, in its order. It is a list with commas. Each element is a number from 0
 * to highestGroup, a range of numbers as in "2-4", the name or the class of a group in any case of
 * letters, or allGroups. None if an element is any other text.
 */
std::vector<long> groupsNamed(const std::string& argument);

/** The groups that several arguments name, in their order. */
std::vector<long> groupsNamed(const std::vector<std::string>& arguments);

} // namespace agent
#endif
