#include "host/CachedAnswer.hpp"
#include "support/TempDir.hpp"

#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>

using namespace cimom;
using namespace std::chrono_literals;

namespace {

const FileVersions first{FileVersion{{1, 0}, 1, 1}};
const FileVersions second{FileVersion{{2, 0}, 1, 1}};

/** An answer that counts its requests. */
class CachedAnswerTest : public testing::Test {
protected:
    /** The outcome of get(): the answer, "failed" or "pending". Waiters record their numbers in `called`. */
    std::string get(const FileVersions& versions = first) {
        try {
            const auto answer = m_answer.get(versions, question);
            return answer ? *answer : "failed";
        } catch (const AnswerPending& pending) {
            pending.wait([this, number = m_waiting++] { called += std::to_string(number); });
            return "pending";
        }
    }
    void run() {
        m_io.restart();
        m_io.run();
    }

    const support::TempDir directory;
    service::Question question = [this] {
        std::ofstream(directory.file("asked"), std::ios::app) << '.';
        return std::to_string(support::readFile(directory.file("asked")).size());
    };
    std::string called;

    boost::asio::io_context m_io{1};

private:
    CachedAnswer m_answer{m_io, {30s, 1h, 1h}};
    int m_waiting = 0;
};

} // namespace

TEST_F(CachedAnswerTest, IsPendingUntilTheChildHasAnswered) {
    EXPECT_EQ("pending", get());
    EXPECT_EQ("pending", get());
    EXPECT_EQ("", called);
    run();
    EXPECT_EQ("01", called);
    EXPECT_EQ("1", get()) << "all waiters share a child";
}

TEST_F(CachedAnswerTest, IsCached) {
    get();
    run();
    EXPECT_EQ("1", get());
    EXPECT_EQ("1", get());
}

TEST_F(CachedAnswerTest, IsRequestedAgainAfterAFileThatItDependsOnHasChanged) {
    get();
    run();
    EXPECT_EQ("1", get());
    EXPECT_EQ("pending", get(second));
    run();
    EXPECT_EQ("2", get(second));
}

TEST_F(CachedAnswerTest, IsReturnedOnceEvenIfAFileHasChangedMeanwhile) {
    get(first);
    run();
    EXPECT_EQ("1", get(second)) << "or a waiter never gets an answer on a host that changes";
    EXPECT_EQ("pending", get(second));
}

TEST_F(CachedAnswerTest, IsRequestedAgainAfterItsLifetime) {
    CachedAnswer shortLived(m_io, {30s, 0s, 1h});
    const auto ask = [&] { return shortLived.get(first, question); };
    EXPECT_THROW(ask(), AnswerPending);
    run();
    EXPECT_EQ("1", *ask());
    EXPECT_THROW(ask(), AnswerPending);
    run();
    EXPECT_EQ("2", *ask());
}

TEST_F(CachedAnswerTest, AFailureHasASeparateLifetime) {
    question = [this]() -> std::string {
        std::ofstream(directory.file("asked"), std::ios::app) << '.';
        throw std::runtime_error("no answer");
    };
    get();
    run();
    EXPECT_EQ("failed", get());
    EXPECT_EQ("failed", get());
    EXPECT_EQ(".", support::readFile(directory.file("asked")));
    CachedAnswer shortLived(m_io, {30s, 1h, 0s});
    EXPECT_THROW(shortLived.get(first, question), AnswerPending);
    run();
    EXPECT_EQ(nullptr, shortLived.get(first, question));
    EXPECT_THROW(shortLived.get(first, question), AnswerPending);
    run();
}

TEST_F(CachedAnswerTest, AChildThatExceedsTheTimeoutHasFailed) {
    CachedAnswer slow(m_io, {10ms, 1h, 1h});
    const service::Question never = []() -> std::string {
        for (;;)
            ::pause();
    };
    EXPECT_THROW(slow.get(first, never), AnswerPending);
    run();
    EXPECT_EQ(nullptr, slow.get(first, never));
}

TEST_F(CachedAnswerTest, AWaiterThatThrowsDoesNotKeepOthersWaiting) {
    CachedAnswer answer(m_io);
    const auto wait = [&](std::function<void()> then) {
        try {
            answer.get(first, question);
        } catch (const AnswerPending& pending) {
            pending.wait(std::move(then));
        }
    };
    bool isCalled = false;
    wait([] { throw std::runtime_error("lost"); });
    wait([&isCalled] { isCalled = true; });
    m_io.restart();
    EXPECT_THROW(m_io.run(), std::runtime_error);
    EXPECT_FALSE(isCalled);
    m_io.run();
    EXPECT_TRUE(isCalled);
}
