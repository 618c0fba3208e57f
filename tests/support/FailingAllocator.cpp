#include "support/FailingAllocator.hpp"

#include <cerrno>

namespace {

thread_local long untilFailure = -1; // -1: none fails
thread_local bool failsOnce = false; // or from then on
thread_local bool hasFailed = false;
thread_local std::size_t failingSize = 0; // 0: none
thread_local long outstandingAllocations = 0;

bool refused() {
    hasFailed = true;
    errno = ENOMEM;
    return false;
}

bool isGranted(std::size_t size) {
    if (failingSize != 0 && size == failingSize)
        return refused();
    if (untilFailure == 0) {
        if (failsOnce)
            untilFailure = -1;
        return refused();
    }
    if (untilFailure > 0)
        --untilFailure;
    return true;
}

void* counted(void* memory) {
    if (memory != nullptr)
        ++outstandingAllocations;
    return memory;
}

void fail(long n, bool once) {
    untilFailure = n;
    failsOnce = once;
    hasFailed = false;
}

} // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    return isGranted(size) ? counted(__libc_malloc(size)) : nullptr;
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
    return isGranted(size) ? counted(__libc_calloc(count, size)) : nullptr;
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size) noexcept {
    if (!isGranted(size))
        return nullptr;
    return memory != nullptr ? __libc_realloc(memory, size) : counted(__libc_malloc(size));
}

__attribute__((visibility("default"))) void free(void* memory) noexcept {
    if (memory != nullptr)
        --outstandingAllocations;
    __libc_free(memory);
}
}

namespace support::memory {

void failFrom(long n) {
    fail(n, false);
}

void failAt(long n) {
    fail(n, true);
}

void failOfSize(std::size_t size) {
    hasFailed = false;
    failingSize = size;
}

bool stopFailing() {
    untilFailure = -1;
    failingSize = 0;
    return hasFailed;
}

long outstanding() {
    return outstandingAllocations;
}

} // namespace support::memory
