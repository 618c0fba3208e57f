#ifndef TESTS_COVERAGE_COUNTERS_H
#define TESTS_COVERAGE_COUNTERS_H

/** Registers a function that writes the counters of one program or library. _exit() calls it. At most 32. */
__attribute__((visibility("default"))) void announce_counters(void (*write)(void));

#endif
