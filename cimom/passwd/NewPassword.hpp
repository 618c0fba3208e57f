#ifndef CIMOM_PASSWD_NEW_PASSWORD_HPP_INCLUDED
#define CIMOM_PASSWD_NEW_PASSWORD_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * Asks for a new password: twice on the terminal that is standard input, without showing it, else one line
 * of standard input. A signal that ends the program meanwhile leaves the terminal as it was.
 *
 * Throws std::runtime_error when the two differ, when the password is empty, too long for longestPassword
 * or holds a control character, which no client could send (RFC 7617), and when there is no input.
 */
std::string newPassword();

} // namespace cimom
#endif
