#ifndef CIMOM_USERS_USERS_FILE_HPP_INCLUDED
#define CIMOM_USERS_USERS_FILE_HPP_INCLUDED
#include "users/Users.hpp"

#include <functional>
#include <string>

namespace cimom {

/**
 * The users of a file. Its group may read it, so that one user can keep it and another run the object
 * manager; a file that group or others can write, or that others can read, is refused, since it decides who
 * may log in and hashes can be guessed.
 *
 * Throws std::runtime_error that says `<path>:<line>: <why>`, or `<path>: <why>` when that is not about a
 * line.
 */
Users readUsers(const std::string& path);

/**
 * Changes the users of a file, or makes one for its owner alone; comments, owner, group and mode stay. When
 * this returns, the change is on the disk; all of it or, whatever happens, nothing. Two at a time keep each
 * other out by `<path>.lock`.
 *
 * Throws what `change` throws, and as readUsers().
 */
void changeUsers(const std::string& path, const std::function<void(Users&)>& change);

} // namespace cimom
#endif
