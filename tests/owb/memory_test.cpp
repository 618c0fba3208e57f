// Memory that runs out: malloc() and free() of this program stand in front of the C library's.
#include "owb.h"

#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/Child.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"
#include "support/Wire.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <string>

namespace {

int allocationsUntilFailure = -1; // -1: none fails
std::size_t failingSize = 0;      // an allocation of this size fails; 0: none
int outstandingAllocations = 0;

} // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void __libc_free(void* memory);

__attribute__((visibility("default"))) void* malloc(std::size_t size) noexcept {
    if (allocationsUntilFailure == 0 || (failingSize != 0 && size == failingSize))
        return nullptr;
    if (allocationsUntilFailure > 0)
        --allocationsUntilFailure;
    ++outstandingAllocations;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void free(void* memory) noexcept {
    if (memory)
        --outstandingAllocations;
    __libc_free(memory);
}
}

namespace {

class OutOfMemoryForAnItem : public testing::TestWithParam<int> {};

TEST_P(OutOfMemoryForAnItem, FailsTheItemLeavesTheQueueAndLosesNothing) {
    const support::TempDir folder; // without a trace, which allocates on its own account
    support::inChild(folder.path(), [] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "first");
        const int before = outstandingAllocations;
        allocationsUntilFailure = GetParam();
        const long result = OWB_itemAdd(q.head(), 0, 1, 1, 0, "second");
        allocationsUntilFailure = -1;
        EXPECT_EQ(0, result);
        EXPECT_EQ(before, outstandingAllocations);
        EXPECT_EQ(Items{"0/1/0/0=first"}, q.items());
        EXPECT_TRUE(q.isConsistent());
    });
}

INSTANTIATE_TEST_SUITE_P(ItselfAndItsText, OutOfMemoryForAnItem, testing::Values(0, 1));

TEST(OutOfMemory, AnItemWithoutMemoryIsTraced) {
    TraceLog trace;
    trace.run([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "first");
        const std::string text(5000, 'x');
        failingSize = text.size() + 1;
        const long result = OWB_itemAdd(q.head(), 0, 1, 1, 0, text.c_str());
        failingSize = 0;
        EXPECT_EQ(0, result);
    });
    EXPECT_EQ("203: Failed to add item: 'Model' group: 0 nominator: 1 row: 1 array: 0",
              trace.linesOf("OWB_itemAdd").at(1));
}

TEST(OutOfMemory, AUrlWithoutMemoryForItsCopyLeavesTheOldOne) {
    TraceLog trace;
    trace.run([] {
        OWB_URLSet("old");
        allocationsUntilFailure = 0;
        const long result = OWB_URLSet("new");
        allocationsUntilFailure = -1;
        EXPECT_EQ(1, result);
        EXPECT_STREQ("old", OWB_URLGet());
    });
}

TEST(Memory, OfAUrlIsGivenBackWhenAnotherIsSet) {
    const support::TempDir folder;
    support::inChild(folder.path(), [] {
        OWB_URLSet("first");
        const int before = outstandingAllocations;
        OWB_URLSet("second");
        OWB_URLSet(OWB_URLGet());
        EXPECT_EQ(before, outstandingAllocations);
    });
}

TEST(OutOfMemory, ATextWithoutMemoryIsCleanedInPlaceAllTheSame) {
    char text[] = " \"x\" ";
    allocationsUntilFailure = 0;
    const char* const result = owbStringClean(text, nullptr);
    allocationsUntilFailure = -1;
    EXPECT_STREQ("'x'", result);
}

using Request = std::function<long(TestQueue&)>;

// Allocations that are outstanding after a request that succeeds.
int outstandingAfter(const Request& request) {
    {
        TestQueue q;
        EXPECT_EQ(OWB_DONE, request(q));
    }
    return outstandingAllocations;
}

// Whether a request runs out of memory that is there for a number of allocations only.
bool runsOut(const Request& request, int allocations) {
    TestQueue q;
    allocationsUntilFailure = allocations;
    try {
        request(q);
    } catch (const std::bad_alloc&) {
    }
    const bool result = allocationsUntilFailure == 0;
    allocationsUntilFailure = -1;
    return result;
}

// Lets a request run out of memory at each of its allocations in turn.
void expectToLoseNothing(const support::Step& answer, const Request& request) {
    const support::TempDir folder;
    const support::ScriptedPeer peer({answer});
    support::inChild(folder.path(), [&] {
        OWB_URLSet(peer.url().c_str());
        const int before = outstandingAfter(request);
        int count = 0;
        while (runsOut(request, count++))
            EXPECT_EQ(before, outstandingAfter(request)) << count;
        EXPECT_LT(10, count);
    });
}

std::string system() {
    return support::wire::instance("QAV_System", {support::wire::stringProperty("Description", "d")});
}

TEST(OutOfMemory, AWriteThatRunsOutOfItLosesNothing) {
    // An enumeration answers a modification too: what stands behind its first byte is not looked at.
    expectToLoseNothing(
        support::Step::answer(support::wire::chunkedReply(support::wire::enumeration({system()}))),
        [](TestQueue& q) {
            OWB_itemAdd(q.head(), 2, 0, 0, 0, "x");
            return OWB_setGroup(2, q.head());
        });
}

TEST(OutOfMemory, AReadOfAnInstanceThatRunsOutOfItLosesNothing) {
    expectToLoseNothing(support::Step::answer(support::wire::plainReply(std::string(1, '\0') + system())),
                        [](TestQueue& q) {
                            char path[] = "QAV_System.Name=\"host\"";
                            return OWB_getInstance(2, path, 0, q.head());
                        });
}

} // namespace
