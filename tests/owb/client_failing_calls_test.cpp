// System calls that fail anywhere in a request of the bundled client library, which reports each failure; the
// next request succeeds. An installed OpenWBEM may wait for minutes.
#include "FailingCall.hpp"
#include "TraceLog.hpp"
#include "support/Descriptors.hpp"
#include "support/FailingCalls.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace calls = support::calls;

namespace {

void expectAsGood(const Outcome& outcome, const Outcome& good, const Call& call) {
    if (call.failures.count(outcome.result) == 1)
        return;
    EXPECT_EQ(good.result, outcome.result);
    EXPECT_EQ(good.items, outcome.items);
}

/** Fails each system call in turn. After each failure the same call must succeed, without a leaked
 * descriptor. */
void expectToLoseNothing(const Call& call, int error) {
    make(call); // opens what the process keeps
    const Outcome good = make(call);
    const std::set<int> before = support::openDescriptors();
    bool hasFailed = true;
    long n = 0;
    for (; hasFailed && !testing::Test::HasFailure(); ++n) {
        calls::failAt(n, error);
        const Outcome outcome = make(call);
        hasFailed = calls::stopFailing();
        SCOPED_TRACE(std::string("call ") + std::to_string(n) + ", " + calls::failed());
        expectAsGood(outcome, good, call);
        if (error == EINTR) {
            EXPECT_EQ(good.result, outcome.result) << "an interruption is not a failure";
        }
        const Outcome again = make(call);
        EXPECT_EQ(good.result, again.result);
        EXPECT_EQ(good.items, again.items);
        EXPECT_EQ(before, support::openDescriptors());
        EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG)) << "a child is left";
    }
    EXPECT_LT(1, n) << "no call has failed";
}

void expect(const support::Step& answer, const Call& call, int error) {
    for (const auto listening : {support::Listening::unixDomain, support::Listening::ipv4}) {
        const support::ScriptedPeer peer({answer}, listening);
        runWithoutTrace([&] {
            OWB_URLSet(peer.url().c_str());
            expectToLoseNothing(call, error);
        });
    }
}

TEST_P(FailingCall, OfAGroup) {
    expect(twoSystems(), readGroup, GetParam());
}

TEST_P(FailingCall, OfAnInstance) {
    expect(oneSystem(), readInstance, GetParam());
}

TEST_P(FailingCall, OfAWrite) {
    expect(writtenSystem(), writeGroup, GetParam());
}

} // namespace
