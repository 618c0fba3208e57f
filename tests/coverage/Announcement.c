/* Part of every program and library of the preset "coverage": each keeps its own counters, and sees no
 * other's. */
#include "Counters.h"

void __gcov_dump(void);

__attribute__((constructor)) static void announce(void) {
    announce_counters(__gcov_dump);
}
