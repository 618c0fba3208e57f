// Allocations that fail at known points of the bridge; out_of_memory_test.cpp fails every allocation.
#include "owb.h"

#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/FailingAllocator.hpp"

#include <gtest/gtest.h>
#include <string>

namespace memory = support::memory;

namespace {

class OutOfMemoryForAnItem : public testing::TestWithParam<int> {};

TEST_P(OutOfMemoryForAnItem, FailsWithoutALeakAndLeavesTheQueueUnchanged) {
    runWithoutTrace([] {
        TestQueue q;
        OWB_itemAdd(q.head(), 0, 1, 0, 0, "first");
        const long before = memory::outstanding();
        memory::failFrom(GetParam());
        const long result = OWB_itemAdd(q.head(), 0, 1, 1, 0, "second");
        memory::stopFailing();
        EXPECT_EQ(0, result);
        EXPECT_EQ(before, memory::outstanding());
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
        memory::failOfSize(text.size() + 1);
        const long result = OWB_itemAdd(q.head(), 0, 1, 1, 0, text.c_str());
        memory::stopFailing();
        EXPECT_EQ(0, result);
    });
    EXPECT_EQ("203: Failed to add item: 'Model' group: 0 nominator: 1 row: 1 array: 0",
              trace.linesOf("OWB_itemAdd").at(1));
}

TEST(OutOfMemory, AUrlWithoutMemoryForItsCopyLeavesTheDefault) {
    TraceLog trace;
    trace.run([] {
        const std::string byDefault = OWB_URLGet();
        OWB_URLSet("old");
        memory::failFrom(0);
        const long result = OWB_URLSet("new");
        memory::stopFailing();
        EXPECT_EQ(1, result);
        EXPECT_EQ(byDefault, OWB_URLGet());
    });
    EXPECT_EQ("149: Set URL: 'owbinary.wbem://localhost:%2ftmp%2fOpenWBEM_UDS'",
              trace.linesOf("OWB_URLSet").back());
}

TEST(OutOfMemory, AUrlSetToItselfIsKept) {
    runWithoutTrace([] {
        OWB_URLSet("own");
        memory::failFrom(0);
        OWB_URLSet(OWB_URLGet());
        memory::stopFailing();
        EXPECT_STREQ("own", OWB_URLGet());
    });
}

TEST(Memory, OfAUrlIsFreedWhenAnotherIsSet) {
    runWithoutTrace([] {
        OWB_URLSet("first");
        const long before = memory::outstanding();
        OWB_URLSet("second");
        OWB_URLSet(OWB_URLGet());
        EXPECT_EQ(before, memory::outstanding());
    });
}

TEST(OutOfMemory, ATextWithoutMemoryIsStillCleanedInPlace) {
    char text[] = " \"x\" ";
    memory::failFrom(0);
    const char* const result = owbStringClean(text, nullptr);
    memory::stopFailing();
    EXPECT_STREQ("'x'", result);
}

} // namespace
