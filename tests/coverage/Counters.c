/*
 * A process that ends by _exit(2) keeps its coverage counters too: this _exit() stands in front of the C
 * library's and writes those of every program and library in the process first. Of the preset "coverage"
 * alone.
 */
#include "Counters.h"

#include <stddef.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { most = 32 };
static void (*writers[most])(void);
static size_t count = 0;

void announce_counters(void (*write)(void)) {
    for (size_t i = 0; i < count; ++i) {
        if (writers[i] == write)
            return;
    }
    if (count < most)
        writers[count++] = write;
}

/** A process that may not write whole files would spoil those of others. */
static int may_write(void) {
    struct rlimit size;
    return getrlimit(RLIMIT_FSIZE, &size) == 0 && size.rlim_cur == RLIM_INFINITY;
}

void _exit(int status) {
    for (size_t i = 0; i < count && may_write(); ++i)
        writers[i]();
    for (;;)
        syscall(SYS_exit_group, status);
}
