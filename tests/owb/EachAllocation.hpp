#ifndef TESTS_OWB_EACH_ALLOCATION_HPP
#define TESTS_OWB_EACH_ALLOCATION_HPP
#include "owb.h"

#include "LibraryCall.hpp"
#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/FailingAllocator.hpp"
#include "support/ScriptedPeer.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <tuple>

/** Allocations that are outstanding after a call without a failure. */
inline long outstandingAfter(const Call& call, long& result) {
    {
        TestQueue q;
        result = call.make(q);
    }
    return support::memory::outstanding();
}

/** Makes the call with failing allocations. Returns whether one has failed. */
inline bool runsOut(const Call& call, void (*fail)(long), long allocation, long good) {
    TestQueue q;
    long result = good;
    fail(allocation);
    try {
        result = call.make(q);
    } catch (const std::bad_alloc&) { // passes: the bridge handles only exceptions of the client library
    }
    const bool hasFailed = support::memory::stopFailing();
    EXPECT_TRUE(result == good || call.failures.count(result) == 1) << result;
    EXPECT_TRUE(q.isConsistent());
    for (const _qItem* item = q.head()->first; item != q.end(); item = item->next)
        EXPECT_NE(nullptr, item->val);
    return hasFailed;
}

/** Fails each allocation in turn. After each failure the same call must succeed, without a leak. */
inline void expectToLoseNothing(const Call& call, void (*fail)(long)) {
    long good = 0;
    outstandingAfter(call, good); // allocates what the process keeps
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
        if (isTracing())
            TraceLog().run(body);
        else
            runWithoutTrace(body);
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
