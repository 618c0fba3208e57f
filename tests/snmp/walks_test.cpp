#include "snmp/tree/Walks.hpp"

#include <gtest/gtest.h>

using namespace snmp;

namespace {

const Clock::time_point start{};

} // namespace

TEST(WalksMemory, AnAnswerIsRememberedWithItsSnapshot) {
    Walks walks;
    const auto snapshot = std::make_shared<const Snapshot>();
    walks.remember({1, 3, 6}, snapshot, start);
    EXPECT_EQ(walks.find({1, 3, 6}, start), snapshot);
    EXPECT_EQ(walks.find({1, 3, 7}, start), nullptr);
    EXPECT_EQ(walks.find({1, 3}, start), nullptr);
}

TEST(WalksMemory, ALaterAnswerReplacesAnEarlierOne) {
    Walks walks;
    const auto later = std::make_shared<const Snapshot>();
    walks.remember({1, 3, 6}, std::make_shared<const Snapshot>(), start);
    walks.remember({1, 3, 6}, later, start);
    EXPECT_EQ(walks.find({1, 3, 6}, start), later);
}

TEST(WalksMemory, AnAnswerIsForgottenAfterItsTime) {
    Walks walks;
    auto snapshot = std::make_shared<const Snapshot>();
    const std::weak_ptr<const Snapshot> weak = snapshot;
    walks.remember({1}, std::move(snapshot), start);
    const auto late = start + Walks::memory + std::chrono::milliseconds(1);
    EXPECT_NE(walks.find({1}, start + Walks::memory), nullptr);
    EXPECT_EQ(walks.find({1}, late), nullptr);
    EXPECT_TRUE(walks.forget(start + Walks::memory));
    EXPECT_FALSE(weak.expired());
    EXPECT_FALSE(walks.forget(late));
    EXPECT_TRUE(weak.expired());
}

TEST(WalksMemory, TheNumberOfAnswersIsBounded) {
    Walks walks;
    const auto snapshot = std::make_shared<const Snapshot>();
    for (std::uint32_t i = 0; i < 100000; ++i)
        walks.remember({1, 3, 6, i}, snapshot, start);
    EXPECT_LE(snapshot.use_count(), static_cast<long>(Walks::capacity) + 1);
    EXPECT_EQ(walks.find({1, 3, 6, 99999}, start), snapshot);
}
