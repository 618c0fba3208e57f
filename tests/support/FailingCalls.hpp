#ifndef TESTS_SUPPORT_FAILING_CALLS_HPP
#define TESTS_SUPPORT_FAILING_CALLS_HPP

/**
 * System calls that fail: functions of the program stand in front of the C library's, those that the library
 * and what it needs call for descriptors, sockets, files, folders, pipes and processes. All of it is a matter
 * of the calling thread. Link failing_calls.
 */
namespace support::calls {

/** Lets the n-th call from now fail with an error number, and no other; 0 is the next one. */
void failAt(long n, int error);

/** Lets each call read or write a single byte. */
void beShort();

/** Ends these, and tells whether a call failed, or was short, meanwhile. */
bool suffice();

/** The name of the call that failed last; empty when none has. */
const char* failed();

/** The number of calls so far. */
long made();

} // namespace support::calls
#endif
