// Memory that the library takes, and memory that runs out: malloc() and its like of this program stand in
// front of the C library's.
#include "Run.hpp"

#include "Descriptors.hpp"
#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

// Of this thread, the one that calls.
thread_local long allocationsUntilFailure = -1; // -1: none fails
thread_local bool failsOnce = false;            // or from then on
thread_local long outstandingAllocations = 0;

bool mayAllocate() {
    if (allocationsUntilFailure == 0) {
        if (failsOnce)
            allocationsUntilFailure = -1;
        errno = ENOMEM;
        return false;
    }
    if (allocationsUntilFailure > 0)
        --allocationsUntilFailure;
    return true;
}

void* counted(void* memory) {
    if (memory)
        ++outstandingAllocations;
    return memory;
}

} // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    return mayAllocate() ? counted(__libc_malloc(size)) : nullptr;
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) noexcept {
    return mayAllocate() ? counted(__libc_calloc(count, size)) : nullptr;
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size) noexcept {
    if (!mayAllocate())
        return nullptr;
    return memory ? __libc_realloc(memory, size) : counted(__libc_malloc(size));
}

__attribute__((visibility("default"))) void free(void* memory) noexcept {
    if (memory)
        --outstandingAllocations;
    __libc_free(memory);
}
}

namespace {

using support::inChild;
using support::TempDir;

/** A size in kB of /proc/self/status. */
long sizeInKilobytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == name + ":") {
            long size = 0;
            status >> size;
            return size;
        }
    ADD_FAILURE() << name;
    return 0;
}

/** Runs a command that reads and prints more than a pipe holds, while memory is short from one allocation on.
 */
int runWithout(long allocation, char**& out, char**& err) {
    char line[] = "one";
    char* input[] = {line, nullptr};
    allocationsUntilFailure = allocation;
    return runcommand("cat; seq 100000; seq 50000 >&2; exit 3", input, &out, &err);
}

/** Releases the lines, or expects that there are none. */
void expectAllOrNothing(int status, char** out, char** err) {
    if (status == 3) {
        EXPECT_EQ(100001U, takeLines(out).size());
        EXPECT_EQ(50000U, takeLines(err).size());
        return;
    }
    EXPECT_EQ(-1, status);
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(nullptr, err);
}

// Lets one allocation after the other be the first that fails, until the call gets by without it.
void expectFailuresThatLeaveNothingBehind() {
    const std::set<int> descriptors = openDescriptors();
    int failures = 0;
    bool wasShort = true;
    for (long allocation = 0; wasShort; ++allocation) {
        SCOPED_TRACE(allocation);
        const long before = outstandingAllocations;
        char** out = nullptr;
        char** err = nullptr;
        const int status = runWithout(allocation, out, err);
        wasShort = allocationsUntilFailure <= 0;
        allocationsUntilFailure = -1;
        expectAllOrNothing(status, out, err);
        EXPECT_EQ(before, outstandingAllocations);
        EXPECT_EQ(descriptors, openDescriptors());
        EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
        failures += status == -1 ? 1 : 0;
    }
    EXPECT_LT(10, failures);
}

TEST(Memory, WhenItRunsOutTheCallFailsAndLeavesNothingBehind) {
    for (const bool once : {true, false}) {
        const TempDir folder;
        inChild(folder.path(), [once] {
            failsOnce = once;
            expectFailuresThatLeaveNothingBehind();
        });
    }
}

TEST(Memory, IsReleasedWithTheLines) {
    const long before = outstandingAllocations;
    char** out;
    char** err;
    EXPECT_EQ(3, runWithout(-1, out, err));
    EXPECT_EQ(before + 4, outstandingAllocations); // twice text and pointers
    freeresultbuf(out);
    freeresultbuf(err);
    EXPECT_EQ(before, outstandingAllocations);
}

TEST(Memory, ForAHundredMegabytesIsLittleMoreThanTheTextAndItsPointers) {
    const TempDir folder;
    inChild(folder.path(), [] {
        const long resident = sizeInKilobytes("VmHWM");
        char** out = nullptr;
        ASSERT_EQ(0, runcommand("yes 12345678901234567890123 | head -c 100000008", nullptr, &out, nullptr));
        std::size_t count = 0;
        for (char** line = out; *line; ++line, ++count)
            ASSERT_STREQ("12345678901234567890123", *line);
        EXPECT_EQ(100000008U / 24, count);
        const long whole = static_cast<long>((100000008 + count * sizeof(char*)) / 1024);
        EXPECT_GT(whole + 2000, sizeInKilobytes("VmHWM") - resident);
        freeresultbuf(out);
        EXPECT_GT(resident + 2000, sizeInKilobytes("VmRSS"));
    });
}

TEST(Memory, AndDescriptorsStayFlatOverAThousandCalls) {
    const TempDir folder;
    inChild(folder.path(), [] {
        for (int i = 0; i < 100; ++i)
            run("echo one; echo two", {"input"});
        const std::set<int> descriptors = openDescriptors();
        const long resident = sizeInKilobytes("RssAnon");
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ(2U, run("echo one; echo two", {"input"}).out.size());
        EXPECT_EQ(descriptors, openDescriptors());
        EXPECT_GT(resident + 64, sizeInKilobytes("RssAnon"));
    });
}

} // namespace
