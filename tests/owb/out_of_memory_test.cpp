// Memory that runs out anywhere: each allocation of a call fails in turn, alone or with all behind it, with
// the trace and without.
#include "owb.h"

#include "MadeUpHost.hpp"
#include "TestQueue.hpp"
#include "TraceLog.hpp"
#include "support/Child.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/ShortMemory.hpp"
#include "support/TempDir.hpp"
#include "support/Wire.hpp"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <set>
#include <string>

namespace memory = support::memory;
using namespace support::wire;

namespace {

/** A call of the library, and what it may return besides what it does when all goes well. */
struct Call {
    std::function<long(TestQueue&)> make;
    std::set<long> failures;
};

/** Allocations that are outstanding after a call that has all the memory it needs. */
long outstandingAfter(const Call& call, long& result) {
    {
        TestQueue q;
        result = call.make(q);
    }
    return memory::outstanding();
}

/** Makes the call while memory is short. Whether it was. */
bool runsOut(const Call& call, void (*fail)(long), long allocation, long good) {
    TestQueue q;
    long result = good;
    fail(allocation);
    try {
        result = call.make(q);
    } catch (const std::bad_alloc&) { // passes through, as anything that is not the client library's
    }
    const bool wasShort = memory::suffice();
    EXPECT_TRUE(result == good || call.failures.count(result) == 1) << result;
    EXPECT_TRUE(q.isConsistent());
    for (const _qItem* item = q.head()->first; item != q.end(); item = item->next)
        EXPECT_NE(nullptr, item->val);
    return wasShort;
}

/** Lets each allocation fail in turn; behind each failure the same call must succeed and have lost nothing.
 */
void expectToLoseNothing(const Call& call, void (*fail)(long)) {
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
    static auto failing() { return std::get<0>(GetParam()) ? memory::failAt : memory::failFrom; }
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

std::string nameOf(const testing::TestParamInfo<std::tuple<bool, bool>>& info) {
    return std::string(std::get<0>(info.param) ? "Alone" : "AndAllBehindIt") +
           (std::get<1>(info.param) ? "WithTheTrace" : "");
}

void trace(const char* text) {
    OWB_Debug(const_cast<char*>("file"), const_cast<char*>("function"), 1, const_cast<char*>("%s\n"), text);
}

TEST(Trace, LosesNoLineWithoutMemory) {
    const TraceLog log;
    log.run([] {
        trace("first");
        memory::failFrom(0);
        trace("second");
        memory::suffice();
    });
    EXPECT_EQ((Lines{"1: first", "1: second"}), log.linesOf("function"));
}

TEST(EachAllocationOfTheTrace, LosesNothing) {
    const Call call{[](TestQueue&) {
                        trace("text");
                        return 0;
                    },
                    {}};
    for (const auto fail : {memory::failAt, memory::failFrom})
        TraceLog().run([&] { expectToLoseNothing(call, fail); });
}

INSTANTIATE_TEST_SUITE_P(Fails, EachAllocation, testing::Combine(testing::Bool(), testing::Bool()), nameOf);

std::string system() {
    return instance("QAV_System",
                    {stringProperty("Description", "d"), property("SysServices", UINT32, bigEndian(72, 4)),
                     arrayProperty("SystemVersion", STRING, {text("one"), text("two")})});
}

TEST_P(EachAllocation, OfAGroup) {
    expect(support::Step::answer(chunkedReply(enumeration({system(), system()}))),
           {[](TestQueue& q) { return OWB_getGroup(2, q.head()); }, {OWB_EXCEPTION}});
}

TEST_P(EachAllocation, OfAnInstance) {
    expect(support::Step::answer(plainReply(std::string(1, '\0') + system())),
           {[](TestQueue& q) {
                char path[] = "QAV_System.Name=\"host\"";
                return OWB_getInstance(2, path, 0, q.head());
            },
            {OWB_EXCEPTION, OWB_NO_INSTANCE}});
}

TEST_P(EachAllocation, OfAWrite) {
    // An enumeration answers a modification too: what stands behind its first byte is not looked at.
    expect(support::Step::answer(chunkedReply(enumeration({system()}))),
           {[](TestQueue& q) {
                OWB_itemAdd(q.head(), 2, 0, 0, 0, "x");
                return OWB_setGroup(2, q.head());
            },
            {OWB_EXCEPTION, OWB_NO_INSTANCE}});
}

TEST_P(EachAllocation, OfADate) {
    expect({[](TestQueue&) {
                char text[] = "20260102030405.000000+060";
                return OWB_calcTimeEpoch(text);
            },
            {0}});
}

TEST_P(EachAllocation, OfAnInterval) {
    expect({[](TestQueue&) {
                char text[] = "00000001020304.000000:000";
                return OWB_calcTimeInterval(text, OWB_TIME_SECONDS);
            },
            {0}});
}

TEST_P(EachAllocation, OfAnItem) {
    expect({[](TestQueue& q) { return OWB_itemAdd(q.head(), 2, 0, 0, 0, "x"); }, {0}});
}

TEST_P(EachAllocation, OfTheRunningSoftware) {
    const MadeUpHost host;
    host.processes().add("7");
    host.processes().add("8");
    host.setTool("echo prog a b Driver\n");
    std::string reason;
    host.run(
        [] {
            expectToLoseNothing({[](TestQueue& q) { return OWB_getSWRun(q.head()); }, {}}, failing());
        },
        MadeUpHost::Programs::real, reason);
    if (!reason.empty())
        GTEST_SKIP() << reason;
}

} // namespace
