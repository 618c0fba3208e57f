/* Linked into every program and library of the preset "coverage": each has its own counters and its own
 * __gcov_dump(). */
#include "Counters.h"

void __gcov_dump(void);

__attribute__((constructor)) static void announce(void) {
    announce_counters(__gcov_dump);
}
