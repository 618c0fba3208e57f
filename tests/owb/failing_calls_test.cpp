// System calls of the library that fail one after the other, with each error, or that transfer single bytes.
#include "FailingCall.hpp"
#include "FakeHost.hpp"
#include "TraceLog.hpp"
#include "support/FailingCalls.hpp"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

namespace calls = support::calls;

namespace {

void expectSameOutcomeByteByByte(const Call& call) {
    const Outcome good = make(call);
    calls::transferSingleBytes();
    const Outcome outcome = make(call);
    EXPECT_TRUE(calls::stopFailing());
    EXPECT_EQ(good.result, outcome.result);
    EXPECT_EQ(good.items, outcome.items);
}

std::string nameOf(const testing::TestParamInfo<int>& info) {
    return ::strerrorname_np(info.param);
}

INSTANTIATE_TEST_SUITE_P(With, FailingCall, testing::ValuesIn(errors), nameOf);

// Descriptors cannot be counted here: /proc of the fake host does not show this process.
TEST_P(FailingCall, OfTheRunningSoftware) {
    const FakeHost host;
    host.addDriver();
    host.run([] {
        const Outcome good = make(readSoftware);
        bool hasFailed = true;
        long n = 0;
        for (; hasFailed && !HasFailure(); ++n) {
            calls::failAt(n, GetParam());
            EXPECT_EQ(1, make(readSoftware).result);
            hasFailed = calls::stopFailing();
            SCOPED_TRACE(std::string("call ") + std::to_string(n) + ", " + calls::failed());
            EXPECT_EQ(good.items, make(readSoftware).items);
            const bool isLeft = std::string(calls::failed()) == "waitpid" && GetParam() != EINTR;
            EXPECT_EQ(isLeft, ::waitpid(-1, nullptr, isLeft ? 0 : WNOHANG) > 0) << "a child";
        }
        EXPECT_LT(1, n) << "no call has failed";
    });
}

TEST(ShortTransfers, AreContinued) {
    const support::ScriptedPeer peer({twoSystems()});
    runWithoutTrace([&] {
        OWB_URLSet(peer.url().c_str());
        expectSameOutcomeByteByByte(readGroup);
        expectSameOutcomeByteByByte(writeGroup);
    });
}

} // namespace
