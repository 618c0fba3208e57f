#ifndef TESTS_SUPPORT_FAILING_ALLOCATOR_HPP
#define TESTS_SUPPORT_FAILING_ALLOCATOR_HPP
#include <cstddef>

/**
 * Interposes malloc(), calloc(), realloc() and free(), so that chosen allocations of the calling thread fail.
 * Link failing_allocator. The address sanitizer interposes the same functions: do not combine the two.
 */
namespace support::memory {

/** Fails the n-th allocation from now and all later ones; 0 is the next one. None for a negative n. */
void failFrom(long n);

/** Fails only the n-th allocation from now. */
void failAt(long n);

/** Fails each allocation of a size. */
void failOfSize(std::size_t size);

/** Lets all allocations succeed again. Returns whether one has failed. */
bool stopFailing();

/** Allocations that have not been freed. */
long outstanding();

} // namespace support::memory
#endif
