#ifndef CIMOM_USERS_USERS_FILE_HPP_INCLUDED
#define CIMOM_USERS_USERS_FILE_HPP_INCLUDED
#include "users/Users.hpp"

#include <functional>
#include <string>

namespace cimom {

/**
 * Reads the users of a file.
 *
 * Rejects a file that group or others can write, since it decides who may log in, or that others can read,
 * since passwords can be guessed from hashes. The group may read it: one user can maintain it, and another
 * run the object manager.
 *
 * Throws std::runtime_error `<path>:<line>: <why>`, or `<path>: <why>` if the error is not in a line.
 */
Users readUsers(const std::string& path);

/**
 * Changes the users of a file, or creates a file for its owner only. Keeps comments, owner, group and mode.
 * When this returns, the change is on the disk; if it throws, the file has the old content. The lock file
 * `<path>.lock` excludes another process meanwhile.
 *
 * Throws what `change` throws, and what readUsers() throws.
 */
void changeUsers(const std::string& path, const std::function<void(Users&)>& change);

} // namespace cimom
#endif
