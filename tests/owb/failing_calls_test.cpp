// System calls that fail anywhere: each one of a call of the library in turn, with each error.
#include "owb.h"
#include "support/Descriptors.hpp"

#include "MadeUpHost.hpp"
#include "TestQueue.hpp"
#include "support/Child.hpp"
#include "support/FailingCalls.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"
#include "support/Wire.hpp"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/wait.h>

namespace calls = support::calls;
using namespace support::wire;

namespace {

/** Everything that a call may be told, and that nobody may take for anything else. */
const int errors[] = {EINTR, EAGAIN, EMFILE, ENOSPC, EIO, ENOMEM, ENOBUFS, EACCES};

struct Outcome {
    long result;
    Items items;
};

struct Call {
    std::function<long(TestQueue&)> make;
    /** What it may return besides what it does when all goes well. */
    std::set<long> failures;
    /** Whether a good result may come with fewer items. */
    bool mayLackItems = false;
};

Outcome make(const Call& call) {
    TestQueue q;
    const long result = call.make(q);
    EXPECT_TRUE(q.isConsistent());
    return {result, q.items()};
}

void expectAsGood(const Outcome& outcome, const Outcome& good, const Call& call) {
    if (call.failures.count(outcome.result) == 1)
        return;
    EXPECT_EQ(good.result, outcome.result);
    if (!call.mayLackItems) {
        EXPECT_EQ(good.items, outcome.items);
    }
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
        hasFailed = calls::suffice();
        SCOPED_TRACE(std::string("call ") + std::to_string(n) + ", " + calls::failed());
        expectAsGood(outcome, good, call);
        if (error == EINTR && !call.mayLackItems) {
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

void expectToBePatient(const Call& call) {
    const Outcome good = make(call);
    calls::beShort();
    const Outcome outcome = make(call);
    EXPECT_TRUE(calls::suffice());
    EXPECT_EQ(good.result, outcome.result);
    EXPECT_EQ(good.items, outcome.items);
}

std::string system() {
    return instance("QAV_System",
                    {stringProperty("Description", "d"), property("SysServices", UINT32, bigEndian(72, 4))});
}

support::Step enumerationOf(const std::vector<std::string>& instances) {
    return support::Step::answer(chunkedReply(enumeration(instances)));
}

const Call readGroup = {[](TestQueue& q) { return OWB_getGroup(2, q.head()); }, {OWB_EXCEPTION}};

const Call readInstance = {[](TestQueue& q) {
                               char path[] = "QAV_System.Name=\"host\"";
                               return OWB_getInstance(2, path, 0, q.head());
                           },
                           {OWB_EXCEPTION}};

const Call write = {[](TestQueue& q) {
                        OWB_itemAdd(q.head(), 2, 0, 0, 0, "x");
                        return OWB_setGroup(2, q.head());
                    },
                    {OWB_EXCEPTION}};

const Call readSoftware = {[](TestQueue& q) { return OWB_getSWRun(q.head()); }, {}, true};

class FailingCall : public testing::TestWithParam<int> {
protected:
    static void expect(const support::Step& answer, const Call& call) {
        for (const auto listening : {support::Listening::unixDomain, support::Listening::ipv4}) {
            const support::TempDir folder;
            const support::ScriptedPeer peer({answer}, listening);
            support::inChild(folder.path(), [&] {
                OWB_URLSet(peer.url().c_str());
                expectToLoseNothing(call, GetParam());
            });
        }
    }
};

std::string nameOf(const testing::TestParamInfo<int>& info) {
    return ::strerrorname_np(info.param);
}

INSTANTIATE_TEST_SUITE_P(With, FailingCall, testing::ValuesIn(errors), nameOf);

TEST_P(FailingCall, OfAGroup) {
    expect(enumerationOf({system(), system()}), readGroup);
}

TEST_P(FailingCall, OfAnInstance) {
    expect(support::Step::answer(plainReply(std::string(1, '\0') + system())), readInstance);
}

TEST_P(FailingCall, OfAWrite) {
    // An enumeration answers a modification too: what stands behind its first byte is not looked at.
    expect(enumerationOf({system()}), write);
}

TEST_P(FailingCall, OfTheRunningSoftware) {
    const MadeUpHost host;
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
                hasFailed = calls::suffice();
                SCOPED_TRACE(std::string("call ") + std::to_string(n) + ", " + calls::failed());
                EXPECT_EQ(good.items, make(readSoftware).items);
                const bool isLeft = std::string(calls::failed()) == "waitpid" && GetParam() != EINTR;
                EXPECT_EQ(isLeft, ::waitpid(-1, nullptr, isLeft ? 0 : WNOHANG) > 0) << "a child";
            }
            EXPECT_LT(1, n) << "no call has failed";
        },
        MadeUpHost::Programs::real, reason);
    if (!reason.empty())
        GTEST_SKIP() << reason;
}

TEST(ShortTransfers, AreMadeUpFor) {
    const support::TempDir folder;
    const support::ScriptedPeer peer({enumerationOf({system(), system()})});
    support::inChild(folder.path(), [&] {
        OWB_URLSet(peer.url().c_str());
        expectToBePatient(readGroup);
        expectToBePatient(write);
    });
}

} // namespace
