#include "users/Logins.hpp"

#include <algorithm>
#include <gtest/gtest.h>

using namespace cimom;
using namespace std::chrono_literals;

namespace {

/** The password of bob is "secret". */
const std::string users = "bob:$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                          "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/";

class LoginsTest : public testing::Test {
protected:
    /** Begins a login. Its verdict is appended to `verdicts`: r for right, w for wrong, o for too often. */
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
    /** Makes as many failed logins as the limit allows, one each second. */
    void failAsOftenAsAllowed() {
        for (std::size_t i = 0; i < Logins::limit; ++i) {
            EXPECT_EQ('w', verdictOf("guess")) << i;
            now += 1s;
        }
    }

    std::string verdicts;
    const Logins::Time start{1000s};
    Logins::Time now = start;

private:
    boost::asio::io_context m_io{1};
    const Users m_users{users};
    PasswordCheck m_passwords{m_io, m_users};
    Logins m_logins{m_passwords, [this] { return now; }};
};

} // namespace

TEST_F(LoginsTest, ARightPasswordIsNoFailure) {
    for (std::size_t i = 0; i <= Logins::limit; ++i)
        EXPECT_EQ('r', verdictOf("secret"));
}

TEST_F(LoginsTest, TooManyFailuresBlockTheirAddressOnly) {
    failAsOftenAsAllowed();
    EXPECT_EQ('o', verdictOf("guess"));
    EXPECT_EQ('o', verdictOf("secret"));
    EXPECT_EQ('r', verdictOf("secret", "10.0.0.2"));
}

TEST_F(LoginsTest, AnAddressIsBlockedUntilThePeriodOfItsFirstFailureEnds) {
    failAsOftenAsAllowed();
    now = start + Logins::period - 1ns;
    EXPECT_EQ('o', verdictOf("secret"));
    now = start + Logins::period;
    EXPECT_EQ('r', verdictOf("secret"));
}

TEST_F(LoginsTest, OneMoreFailureBlocksTheAddressAgain) {
    failAsOftenAsAllowed();
    now = start + Logins::period;
    EXPECT_EQ('w', verdictOf("guess"));
    EXPECT_EQ('o', verdictOf("secret")) << "nine failures before and this one";
    now += 1s;
    EXPECT_EQ('r', verdictOf("secret"));
}

TEST_F(LoginsTest, ACheckThatBeganBeforeTheBlockReportsNothingElse) {
    for (std::size_t i = 0; i < Logins::limit + 3; ++i)
        begin("guess");
    run();
    const auto count = [this](char verdict) { return std::count(verdicts.begin(), verdicts.end(), verdict); };
    EXPECT_EQ(static_cast<long>(Logins::limit), count('w')) << verdicts;
    EXPECT_EQ(3, count('o')) << verdicts;
}
