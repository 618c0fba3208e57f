// System calls that fail anywhere in a request of the client library: the bundled one reports each failure,
// and the next request succeeds. An installed OpenWBEM may wait for minutes.
#include "LibraryCall.hpp"
#include "support/Child.hpp"
#include "support/Descriptors.hpp"
#include "support/FailingCalls.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace calls = support::calls;
using namespace support::wire;

namespace {

void expectAsGood(const Outcome& outcome, const Outcome& good, const Call& call) {
    if (call.failures.count(outcome.result) == 1)
        return;
    EXPECT_EQ(good.result, outcome.result);
    EXPECT_EQ(good.items, outcome.items);
}

/** Lets each system call fail in turn; behind each failure the same call must succeed, with the same
 * descriptors. */
void expectToLoseNothing(const Call& call, int error) {
    make(call); // what is opened once a process
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
            EXPECT_EQ(good.result, outcome.result) << "an interruption is no failure";
        }
        const Outcome again = make(call);
        EXPECT_EQ(good.result, again.result);
        EXPECT_EQ(good.items, again.items);
        EXPECT_EQ(before, support::openDescriptors());
        EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG)) << "a child is left";
    }
    EXPECT_LT(1, n) << "no call has failed";
}

const Call readInstance = {[](TestQueue& q) {
                               char path[] = "QAV_System.Name=\"host\"";
                               return OWB_getInstance(2, path, 0, q.head());
                           },
                           {OWB_EXCEPTION}};

void expect(const support::Step& answer, const Call& call, int error) {
    for (const auto listening : {support::Listening::unixDomain, support::Listening::ipv4}) {
        const support::TempDir folder;
        const support::ScriptedPeer peer({answer}, listening);
        support::inChild(folder.path(), [&] {
            OWB_URLSet(peer.url().c_str());
            expectToLoseNothing(call, error);
        });
    }
}

TEST_P(FailingCall, OfAGroup) {
    expect(enumerationOf({systemInstance(), systemInstance()}), readSystem, GetParam());
}

TEST_P(FailingCall, OfAnInstance) {
    expect(support::Step::answer(plainReply(std::string(1, '\0') + systemInstance())), readInstance,
           GetParam());
}

TEST_P(FailingCall, OfAWrite) {
    // An enumeration answers a modification too: what stands behind its first byte is not looked at.
    expect(enumerationOf({systemInstance()}), writeSystem, GetParam());
}

} // namespace
