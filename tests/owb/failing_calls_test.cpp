// System calls that fail, each one of a call of the library in turn, with each error, or that transfer single
// bytes.
#include "FakeHost.hpp"
#include "LibraryCall.hpp"
#include "support/Child.hpp"
#include "support/FailingCalls.hpp"
#include "support/TempDir.hpp"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

namespace calls = support::calls;

namespace {

const Call readSoftware = {[](TestQueue& q) { return OWB_getSWRun(q.head()); }, {}};

void expectToBePatient(const Call& call) {
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

TEST_P(FailingCall, OfTheRunningSoftware) {
    const FakeHost host;
    host.processes().add("7");
    host.processes().add("8");
    host.setTool("echo prog a b Driver\n");
    std::string reason;
    // Its /proc tells nothing of this process.
    host.run(
        [] {
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
        },
        FakeHost::Programs::real, reason);
    if (!reason.empty())
        GTEST_SKIP() << reason;
}

TEST(ShortTransfers, AreMadeUpFor) {
    const support::TempDir folder;
    const support::ScriptedPeer peer({enumerationOf({systemInstance(), systemInstance()})});
    support::inChild(folder.path(), [&] {
        OWB_URLSet(peer.url().c_str());
        expectToBePatient(readSystem);
        expectToBePatient(writeSystem);
    });
}

} // namespace
