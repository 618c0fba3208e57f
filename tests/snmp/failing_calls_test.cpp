// System calls of a session that fail: each call in turn, with each error.
#include "snmp/SessionThread.hpp"
#include "support/FailingCalls.hpp"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>

namespace calls = support::calls;

namespace {

class FailingSessionCall : public testing::TestWithParam<int> {};

std::string nameOf(const testing::TestParamInfo<int>& info) {
    return ::strerrorname_np(info.param);
}

INSTANTIATE_TEST_SUITE_P(With, FailingSessionCall, testing::Values(EINTR, EIO, EMFILE, ECONNRESET, ENOBUFS),
                         nameOf);

} // namespace

TEST_P(FailingSessionCall, LosesTheMasterAtMost) {
    bool hasFailed = true;
    for (long n = 0; hasFailed && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        EXPECT_EQ("", SessionThread::run([&] { calls::failAt(n, GetParam()); },
                                         [&] { hasFailed = calls::stopFailing(); }));
        ASSERT_LT(n, 1000);
    }
}

TEST(SessionCalls, TransfersOfSingleBytesAreEnough) {
    EXPECT_EQ("", SessionThread::run(calls::transferSingleBytes, [] { EXPECT_TRUE(calls::stopFailing()); }));
}
