// System calls interrupted by a signal. The program interposes functions of the C library.
#include "Run.hpp"

#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <cerrno>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The number of further calls to interrupt.
int pollsToInterrupt = 0;
int readsToInterrupt = 0;
int waitsToInterrupt = 0;

bool isInterrupted(int& left) {
    if (left == 0)
        return false;
    --left;
    errno = EINTR;
    return true;
}

} // namespace

extern "C" {
__attribute__((visibility("default"))) int poll(pollfd* descriptors, nfds_t count, int milliseconds) {
    static const auto next = reinterpret_cast<decltype(&poll)>(::dlsym(RTLD_NEXT, "poll"));
    return isInterrupted(pollsToInterrupt) ? -1 : next(descriptors, count, milliseconds);
}

__attribute__((visibility("default"))) ssize_t read(int descriptor, void* bytes, size_t count) {
    static const auto next = reinterpret_cast<decltype(&read)>(::dlsym(RTLD_NEXT, "read"));
    return isInterrupted(readsToInterrupt) ? -1 : next(descriptor, bytes, count);
}

__attribute__((visibility("default"))) pid_t waitpid(pid_t pid, int* status, int options) {
    static const auto next = reinterpret_cast<decltype(&waitpid)>(::dlsym(RTLD_NEXT, "waitpid"));
    return isInterrupted(waitsToInterrupt) ? -1 : next(pid, status, options);
}
}

namespace {

void expectRepeated(int& toInterrupt) {
    const support::TempDir directory;
    support::inChild(directory.path(), [&toInterrupt] {
        toInterrupt = 5;
        const Outcome result = run("echo one; echo two >&2; kill -9 0");
        EXPECT_EQ(0, toInterrupt);
        EXPECT_EQ(128 + 9, result.status);
        EXPECT_EQ(Lines{"one"}, result.out);
        EXPECT_EQ(Lines{"two"}, result.err);
        EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
    });
}

TEST(Interruption, OfAWaitForOutputIsHarmless) {
    expectRepeated(pollsToInterrupt);
}

TEST(Interruption, OfAReadIsHarmless) {
    expectRepeated(readsToInterrupt);
}

TEST(Interruption, OfAWaitForTheChildIsHarmless) {
    expectRepeated(waitsToInterrupt);
}

} // namespace
