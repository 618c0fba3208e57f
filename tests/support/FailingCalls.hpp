#ifndef TESTS_SUPPORT_FAILING_CALLS_HPP
#define TESTS_SUPPORT_FAILING_CALLS_HPP

/**
 * Interposes the functions of the C library that make system calls for descriptors, sockets, files,
 * directories, pipes and processes, so that chosen calls of the calling thread fail. Link failing_calls.
 */
namespace support::calls {

/** Fails only the n-th call from now, with an error number; 0 is the next one. */
void failAt(long n, int error);

/** Limits each read and write to a single byte. */
void transferSingleBytes();

/** Lets all calls succeed again. Returns whether one has failed or was limited. */
bool stopFailing();

/** The name of the call that failed last; empty when none has. */
const char* failed();

/** The number of calls so far. */
long made();

} // namespace support::calls
#endif
