#ifndef CIMOM_USERS_PASSWORD_HASH_HPP_INCLUDED
#define CIMOM_USERS_PASSWORD_HASH_HPP_INCLUDED
#include <cstddef>
#include <string>

namespace cimom {

/** How a password is hashed (crypt(5)): "$y$" or "$6$". */
enum class HashMethod { yescrypt, sha512 };

/** Maximum number of bytes of a password: the maximum of crypt(3). */
inline constexpr std::size_t maximumPassword = 511;

/**
 * Hashes a password in the form of crypt(5), with a new salt and the default cost of the method. Throws
 * std::runtime_error for a password that is too long or contains NUL, and if no random bytes are available.
 */
std::string hashOf(const std::string& password, HashMethod method);

/** Why a text is not a hash of one of these methods, to be printed after "the hash"; empty if it is one. */
std::string faultOfHash(const std::string& text);

/**
 * Whether a hash is that of a password. Costs what hashing costs: tens of milliseconds of processor time and,
 * for yescrypt, 16 MiB.
 */
bool isPasswordOf(const std::string& hash, const std::string& password);

} // namespace cimom
#endif
