#ifndef OPENWBEM_CLIENT_COOKIE_FILE_HPP_INCLUDED
#define OPENWBEM_CLIENT_COOKIE_FILE_HPP_INCLUDED
#include <string>

namespace OpenWBEM {

/**
 * Reads the secret by which an object manager recognises a local user: it puts it into a file that only this
 * user can read, and names the file. Since anybody may name any file, only one that looks just so is taken:
 * an absolute path; a regular file, not reached through a link at its end, of this user alone; one line of
 * decimal digits. Nothing else is opened for reading, and its reading never blocks.
 *
 * Throws HTTPException otherwise.
 */
std::string readCookie(const std::string& path);

} // namespace OpenWBEM
#endif
