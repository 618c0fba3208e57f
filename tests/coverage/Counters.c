/*
 * Interposes _exit() in the preset "coverage": writes the counters of every program and library of the
 * process before it ends.
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

/** Whether the process may write files of any size: a limit would truncate the counters of other processes.
 */
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
