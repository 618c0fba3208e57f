// A session whose memory runs out: each allocation fails in turn.
#include "snmp/SessionThread.hpp"
#include "support/FailingAllocator.hpp"

#include <gtest/gtest.h>

namespace memory = support::memory;

namespace {

/** Runs sessions. In the n-th run the n-th allocation fails; in the last run none does. */
void forEachAllocation(void (*fail)(long), const std::function<void(const std::string& failure)>& check) {
    bool hasFailed = true;
    for (long n = 0; hasFailed && !testing::Test::HasFailure(); ++n) {
        SCOPED_TRACE(n);
        check(SessionThread::run([&] { fail(n); }, [&] { hasFailed = memory::stopFailing(); }));
        ASSERT_LT(n, 10000);
    }
}

} // namespace

TEST(SessionMemory, ASessionRecoversFromAFailedAllocation) {
    forEachAllocation(memory::failAt, [](const std::string& failure) { EXPECT_EQ("", failure); });
}

TEST(SessionMemory, ASessionWithoutMemoryEndsInAnException) {
    forEachAllocation(memory::failFrom, [](const std::string& failure) {
        EXPECT_TRUE(failure.empty() || failure == "std::bad_alloc") << failure;
    });
}
