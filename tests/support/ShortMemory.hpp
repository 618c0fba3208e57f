#ifndef TESTS_SUPPORT_SHORT_MEMORY_HPP
#define TESTS_SUPPORT_SHORT_MEMORY_HPP
#include <cstddef>

/**
 * Memory that runs out: malloc(), calloc(), realloc() and free() of the program stand in front of the C
 * library's. All of it is a matter of the calling thread. Link short_memory; not under the address sanitizer,
 * which needs them for itself.
 */
namespace support::memory {

/** Lets the n-th allocation from now and all behind it fail; 0 is the next one. None for a negative n. */
void failFrom(long n);

/** Lets the n-th allocation from now fail, and no other. */
void failAt(long n);

/** Lets each allocation of a size fail. */
void failOfSize(std::size_t size);

/** Ends all of these, and tells whether an allocation failed meanwhile. */
bool suffice();

/** Allocations that have not been given back. */
long outstanding();

} // namespace support::memory
#endif
