#ifndef TESTS_OPENWBEM_MEMORY_HPP
#define TESTS_OPENWBEM_MEMORY_HPP
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

/** Limits the further memory of this process. Without effect under a sanitizer, which needs address space. */
inline void limitMemory(unsigned long bytes) {
#ifdef __SANITIZE_ADDRESS__
    static_cast<void>(bytes);
#else
    std::ifstream statm("/proc/self/statm");
    unsigned long pages = 0;
    statm >> pages;
    const rlim_t limit = pages * static_cast<unsigned long>(::sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit both = {limit, limit};
    ::setrlimit(RLIMIT_AS, &both);
#endif
}

#endif
