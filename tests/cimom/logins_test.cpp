#include "users/Logins.hpp"

#include <algorithm>
#include <gtest/gtest.h>

using namespace cimom;
using namespace std::chrono_literals;

namespace {

const FailedLogins::Time start{1000s};

/** A count that is full. */
FailedLogins full(const std::string& address) {
    FailedLogins failed;
    for (std::size_t i = 0; i < FailedLogins::limit; ++i)
        failed.add(address, start + std::chrono::seconds(i));
    return failed;
}

/** Of "secret". */
const std::string users = "bob:$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                          "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/";

class LoginsTest : public testing::Test {
protected:
    /** Begins a login, whose verdict stands in `verdicts` when it is there: right, wrong, or too often. */
    void begin(const std::string& password, const std::string& address = "10.0.0.1") {
        const std::size_t number = verdicts.size();
        verdicts += '-';
        m_logins.logIn(address, "bob", password, [this, number](Verdict verdict) {
            verdicts[number] = verdict == Verdict::mayWrite ? 'r' : verdict == Verdict::wrong ? 'w' : 'o';
        });
    }
    char verdictOf(const std::string& password, const std::string& address = "10.0.0.1") {
        begin(password, address);
        run();
        return verdicts.back();
    }
    void run() {
        m_io.restart();
        m_io.run();
    }
    void failAsOftenAsAllowed() {
        for (std::size_t i = 0; i < FailedLogins::limit; ++i)
            EXPECT_EQ('w', verdictOf("guess"));
    }

    std::string verdicts;
    FailedLogins::Time now = start;

private:
    boost::asio::io_context m_io{1};
    const Users m_users{users};
    PasswordCheck m_passwords{m_io, m_users};
    Logins m_logins{m_passwords, [this] { return now; }};
};

} // namespace

TEST(FailedLogins, AnAddressIsFullWithTheLastThatMayFail) {
    FailedLogins failed;
    for (std::size_t i = 0; i < FailedLogins::limit; ++i) {
        EXPECT_FALSE(failed.isFull("a", start)) << i;
        failed.add("a", start);
    }
    EXPECT_TRUE(failed.isFull("a", start));
    EXPECT_FALSE(failed.isFull("b", start)) << "others are not";
}

TEST(FailedLogins, EachCountsForThePeriod) {
    const FailedLogins failed = full("a");
    EXPECT_TRUE(failed.isFull("a", start + FailedLogins::period - 1ns));
    EXPECT_FALSE(failed.isFull("a", start + FailedLogins::period));
}

TEST(FailedLogins, OneMoreFillsAnAddressAgainWhenTheFirstHasPassed) {
    FailedLogins failed = full("a");
    const auto later = start + FailedLogins::period;
    failed.add("a", later);
    EXPECT_TRUE(failed.isFull("a", later)) << "nine of before and this one";
    EXPECT_FALSE(failed.isFull("a", later + 1s));
}

TEST_F(LoginsTest, ARightPasswordIsNoFailure) {
    for (std::size_t i = 0; i <= FailedLogins::limit; ++i)
        EXPECT_EQ('r', verdictOf("secret"));
}

TEST_F(LoginsTest, AfterTooManyFailuresNothingIsTold) {
    failAsOftenAsAllowed();
    EXPECT_EQ('o', verdictOf("guess"));
    EXPECT_EQ('o', verdictOf("secret"));
    EXPECT_EQ('r', verdictOf("secret", "10.0.0.2")) << "another address";
    now += FailedLogins::period;
    EXPECT_EQ('r', verdictOf("secret"));
}

TEST_F(LoginsTest, ChecksThatBeganBeforeTellNothingEither) {
    for (std::size_t i = 0; i < FailedLogins::limit + 3; ++i)
        begin("guess");
    run();
    const auto count = [this](char verdict) { return std::count(verdicts.begin(), verdicts.end(), verdict); };
    EXPECT_EQ(static_cast<long>(FailedLogins::limit), count('w')) << verdicts;
    EXPECT_EQ(3, count('o')) << verdicts;
}
