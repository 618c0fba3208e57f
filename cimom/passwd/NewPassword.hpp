#ifndef CIMOM_PASSWD_NEW_PASSWORD_HPP_INCLUDED
#define CIMOM_PASSWD_NEW_PASSWORD_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * Reads a new password. If standard input is a terminal, asks for it twice, without echo; a signal that ends
 * the program restores the echo. Else reads one line of standard input.
 *
 * Throws std::runtime_error if the two passwords do not match, if the password is empty, longer than
 * maximumPassword or contains a control character, which no client can send (RFC 7617), and if there is no
 * input.
 */
std::string newPassword();

} // namespace cimom
#endif
