#ifndef TESTS_OWB_EACH_ALLOCATION_HPP
#define TESTS_OWB_EACH_ALLOCATION_HPP
#include "owb.h"

#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/Child.hpp"
#include "support/FailingAllocator.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <set>
#include <tuple>

/** A call of the library, and what it may return besides what it does when all goes well. */
struct Call {
    std::function<long(TestQueue&)> make;
    std::set<long> failures;
};

/** Allocations that are outstanding after a call that has all the memory it needs. */
inline long outstandingAfter(const Call& call, long& result) {
    {
        TestQueue q;
        result = call.make(q);
    }
    return support::memory::outstanding();
}

/** Makes the call while memory is short. Whether it was. */
inline bool runsOut(const Call& call, void (*fail)(long), long allocation, long good) {
    TestQueue q;
    long result = good;
    fail(allocation);
    try {
        result = call.make(q);
    } catch (const std::bad_alloc&) { // passes through, as anything that is not the client library's
    }
    const bool wasShort = support::memory::stopFailing();
    EXPECT_TRUE(result == good || call.failures.count(result) == 1) << result;
    EXPECT_TRUE(q.isConsistent());
    for (const _qItem* item = q.head()->first; item != q.end(); item = item->next)
        EXPECT_NE(nullptr, item->val);
    return wasShort;
}

/** Lets each allocation fail in turn; behind each failure the same call must succeed and have lost nothing.
 */
inline void expectToLoseNothing(const Call& call, void (*fail)(long)) {
    long good = 0;
    outstandingAfter(call, good); // what is allocated once a process
    const long before = outstandingAfter(call, good);
    long allocation = 0;
    while (!testing::Test::HasFailure() && runsOut(call, fail, allocation, good)) {
        long again = 0;
        ASSERT_EQ(before, outstandingAfter(call, again)) << "allocation " << allocation;
        ASSERT_EQ(good, again) << "allocation " << allocation;
        ++allocation;
    }
    EXPECT_LT(0, allocation);
}

class EachAllocation : public testing::TestWithParam<std::tuple<bool, bool>> {
protected:
    static auto failing() {
        return std::get<0>(GetParam()) ? support::memory::failAt : support::memory::failFrom;
    }
    static bool isTracing() { return std::get<1>(GetParam()); }

    static void inChild(const std::function<void()>& body) {
        const support::TempDir folder;
        if (isTracing())
            TraceLog().run(body);
        else
            support::inChild(folder.path(), body);
    }
    static void expect(const Call& call) {
        inChild([&call] { expectToLoseNothing(call, failing()); });
    }
    static void expect(const support::Step& answer, const Call& call) {
        const support::ScriptedPeer peer({answer});
        inChild([&] {
            OWB_URLSet(peer.url().c_str());
            expectToLoseNothing(call, failing());
        });
    }
};

#endif
