#ifndef OWBCTL_ARGUMENTS_NAMES_HPP
#define OWBCTL_ARGUMENTS_NAMES_HPP

#include "agent/Change.hpp"
#include "agent/GroupNames.hpp"

#include <stdexcept>
#include <string>
#include <vector>

/** Groups, properties and values as a user names them. */
namespace owbctl {

/** A usage error that only the catalogue reveals. what() is for people. */
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/**
 * The groups of the class that an object path names. Throws UsageError if no group has this class.
 */
std::vector<long> groupsOfPath(const std::string& path);

/**
 * Parses arguments of the form NAME=VALUE, in their order. NAME is a property of `group` in any case of
 * letters, or a nominator. VALUE is all text after the first "=" and may be empty. Throws UsageError for an
 * argument without "=", an unknown property, and a property that is named twice.
 */
std::vector<agent::Assignment> parseAssignments(long group, const std::vector<std::string>& arguments);

} // namespace owbctl
#endif
