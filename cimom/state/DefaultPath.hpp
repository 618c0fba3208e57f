#ifndef CIMOM_STATE_DEFAULT_PATH_HPP_INCLUDED
#define CIMOM_STATE_DEFAULT_PATH_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * The state file of an object manager that is not given one: /var/lib/owb/state.json for root, owb/state.json
 * in the state folder of another user (XDG Base Directory Specification). Empty for a user without a home.
 */
std::string defaultStatePath();

} // namespace cimom
#endif
