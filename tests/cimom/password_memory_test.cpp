// Out of memory at the start of a password check.
#include "support/FailingAllocator.hpp"
#include "users/PasswordCheck.hpp"

#include <gtest/gtest.h>
#include <new>

using namespace cimom;
using namespace std::chrono_literals;
namespace memory = support::memory;

namespace {

/** Begins a check whose allocation with this index fails. Returns false if it throws an exception. */
bool isBegunWithout(long allocation, PasswordCheck& check) {
    const std::string user = "bob";
    const std::string password = "secret";
    const PasswordCheck::Done done = [](Verdict) {};
    memory::failAt(allocation);
    try {
        check.check(user, password, done);
    } catch (const std::bad_alloc&) {
        memory::stopFailing();
        return false;
    }
    memory::stopFailing();
    return true;
}

} // namespace

TEST(PasswordCheckOutOfMemory, ACheckThatCannotBeginTakesNoPlace) {
    const Users users("bob:$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                      "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/");
    for (long allocation = 0;; ++allocation) {
        boost::asio::io_context io(1);
        PasswordCheck check(io, users, {1, 0, 1h});
        if (isBegunWithout(allocation, check)) {
            EXPECT_LT(2, allocation);
            return;
        }
        bool isRight = false;
        bool isDone = false;
        check.check("bob", "secret", [&](Verdict verdict) {
            isRight = verdict == Verdict::mayWrite;
            isDone = true;
        });
        while (!isDone)
            io.run_one();
        EXPECT_TRUE(isRight) << "allocation " << allocation;
    }
}
