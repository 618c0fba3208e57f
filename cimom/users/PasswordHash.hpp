#ifndef CIMOM_USERS_PASSWORD_HASH_HPP_INCLUDED
#define CIMOM_USERS_PASSWORD_HASH_HPP_INCLUDED
#include <cstddef>
#include <string>

namespace cimom {

/** How a password is hashed (crypt(5)): "$y$" or "$6$". */
enum class HashMethod { yescrypt, sha512 };

/** Bytes of a password; crypt(3) takes no longer ones. */
inline constexpr std::size_t longestPassword = 511;

/**
 * The hash of a password in the form of crypt(5), with a salt of its own and what its method costs by
 * default. Throws std::runtime_error for a password that is too long or holds a NUL, and when there is no
 * randomness.
 */
std::string hashOf(const std::string& password, HashMethod method);

/**
 * Why a text is not the hash of a password by one of the methods above, in words that follow "the hash";
 * empty when it is.
 */
std::string faultOfHash(const std::string& text);

/**
 * Whether a password is the one that was hashed. Takes what the hash was made to cost: tens of milliseconds
 * of processor time and, for yescrypt, 16 MiB.
 */
bool isPasswordOf(const std::string& hash, const std::string& password);

} // namespace cimom
#endif
