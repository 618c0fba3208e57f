// Allocations that fail anywhere in the bridge without the client library: each allocation of a call fails in
// turn, alone or with all later ones, with and without the trace.
#include "EachAllocation.hpp"

#include <gtest/gtest.h>
#include <string>

namespace memory = support::memory;

namespace {

std::string nameOf(const testing::TestParamInfo<std::tuple<bool, bool>>& info) {
    return std::string(std::get<0>(info.param) ? "Alone" : "WithAllLaterOnes") +
           (std::get<1>(info.param) ? "WithTheTrace" : "");
}

void trace(const char* text) {
    OWB_Debug(const_cast<char*>("file"), const_cast<char*>("function"), 1, const_cast<char*>("%s\n"), text);
}

TEST(Trace, WritesEveryLineWithoutMemory) {
    const TraceLog log;
    log.run([] {
        trace("first");
        memory::failFrom(0);
        trace("second");
        memory::stopFailing();
    });
    EXPECT_EQ((Lines{"1: first", "1: second"}), log.linesOf("function"));
}

TEST(EachAllocationOfTheTrace, LeaksNothing) {
    const Call call{[](TestQueue&) {
                        trace("text");
                        return 0;
                    },
                    {}};
    for (const auto fail : {memory::failAt, memory::failFrom})
        TraceLog().run([&] { expectToLoseNothing(call, fail); });
}

INSTANTIATE_TEST_SUITE_P(Fails, EachAllocation, testing::Combine(testing::Bool(), testing::Bool()), nameOf);

TEST_P(EachAllocation, OfAnItem) {
    expect({[](TestQueue& q) { return OWB_itemAdd(q.head(), 2, 0, 0, 0, "x"); }, {0}});
}

} // namespace
