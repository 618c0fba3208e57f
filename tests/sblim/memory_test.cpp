// Memory use of the library, and out of memory.
#include "Run.hpp"

#include "support/Child.hpp"
#include "support/Descriptors.hpp"
#include "support/FailingAllocator.hpp"
#include "support/TempDir.hpp"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

namespace memory = support::memory;
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

/** Runs a command that reads and prints more than the capacity of a pipe. */
int runTalkative(char**& out, char**& err) {
    char line[] = "one";
    char* input[] = {line, nullptr};
    return runcommand("cat; seq 100000; seq 50000 >&2; exit 3", input, &out, &err);
}

/** Releases the lines on success; expects none after a failure. */
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

// Fails from the first, the second, ... allocation on, until the call succeeds.
void expectFailuresWithoutLeaks(void (*fail)(long)) {
    const std::set<int> descriptors = support::openDescriptors();
    int failures = 0;
    bool wasShort = true;
    for (long allocation = 0; wasShort; ++allocation) {
        SCOPED_TRACE(allocation);
        const long before = memory::outstanding();
        char** out = nullptr;
        char** err = nullptr;
        fail(allocation);
        const int status = runTalkative(out, err);
        wasShort = memory::stopFailing();
        expectAllOrNothing(status, out, err);
        EXPECT_EQ(before, memory::outstanding());
        EXPECT_EQ(descriptors, support::openDescriptors());
        EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
        failures += status == -1 ? 1 : 0;
    }
    EXPECT_LT(10, failures);
}

TEST(Memory, RunningOutFailsTheCallWithoutALeak) {
    for (const auto fail : {memory::failAt, memory::failFrom}) {
        const TempDir directory;
        inChild(directory.path(), [fail] { expectFailuresWithoutLeaks(fail); });
    }
}

TEST(Memory, IsReleasedWithTheLines) {
    const long before = memory::outstanding();
    char** out;
    char** err;
    EXPECT_EQ(3, runTalkative(out, err));
    EXPECT_EQ(before + 4, memory::outstanding()); // text and pointers of two streams
    freeresultbuf(out);
    freeresultbuf(err);
    EXPECT_EQ(before, memory::outstanding());
}

TEST(Memory, ForAHundredMegabytesIsLittleMoreThanTheTextAndItsPointers) {
    const TempDir directory;
    inChild(directory.path(), [] {
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

TEST(Memory, AndDescriptorsStayConstantOverAThousandCalls) {
    const TempDir directory;
    inChild(directory.path(), [] {
        for (int i = 0; i < 100; ++i)
            run("echo one; echo two", {"input"});
        const std::set<int> descriptors = support::openDescriptors();
        const long resident = sizeInKilobytes("RssAnon");
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ(2U, run("echo one; echo two", {"input"}).out.size());
        EXPECT_EQ(descriptors, support::openDescriptors());
        EXPECT_GT(resident + 64, sizeInKilobytes("RssAnon"));
    });
}

} // namespace
