#include "users/PasswordCheck.hpp"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace cimom;
using namespace std::chrono_literals;

namespace {

const std::string hashEnd = "$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                            "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/";
/** A hash of "secret". */
const std::string cheapHash = "$6$rounds=1000" + hashEnd;
/** A hash whose check takes minutes, longer than any test. */
const std::string endlessHash = "$6$rounds=999999999" + hashEnd;

bool hasChildren() {
    return ::waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

/** The process whose parent is this one (proc(5), stat). */
pid_t onlyChild() {
    const std::string mine = std::to_string(::getpid());
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream file(entry.path() / "stat");
        std::string line;
        std::getline(file, line);
        std::istringstream behindName(line.substr(line.rfind(')') + 1));
        std::string state;
        std::string parent;
        if (behindName >> state >> parent && parent == mine)
            return std::stoi(entry.path().filename().string());
    }
    return -1;
}

/** A connection of this process to itself. */
class Connection {
public:
    Connection() { EXPECT_EQ(0, ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends)); }
    ~Connection() { ::close(m_ends[1]); }
    /** Closes one end. Returns whether the other end notices: not if a child has inherited the end. */
    bool endsWhenClosed() {
        ::close(m_ends[0]);
        pollfd waiting{m_ends[1], POLLIN, 0};
        return ::poll(&waiting, 1, 10000) == 1;
    }

private:
    int m_ends[2];
};

/** Password checks of users, one for each hash, and their results. */
class Checks {
public:
    explicit Checks(const std::string& text, PasswordCheckLimits limits = PasswordCheckLimits())
        : m_users(text)
        , m_check(std::make_unique<PasswordCheck>(io, m_users, limits)) {}

    void add(const std::string& user, const std::string& password) {
        const std::size_t number = verdicts.size();
        verdicts.push_back('-');
        m_check->check(user, password, [this, number](Verdict verdict) {
            verdicts[number] = verdict == Verdict::mayWrite  ? 'r'
                               : verdict == Verdict::mayRead ? 'o'
                               : verdict == Verdict::wrong   ? 'w'
                                                             : 'u';
            order += std::to_string(number);
        });
    }

    boost::asio::io_context io{1};
    /** Each verdict: right, right of a read-only user, wrong, unchecked, or "-" while the check runs. */
    std::string verdicts;
    /** The numbers of the checks in the order of their ends. */
    std::string order;

private:
    const Users m_users;
    std::unique_ptr<PasswordCheck> m_check;
};

} // namespace

TEST(PasswordCheck, ItReportsWhetherAPasswordIsRight) {
    Checks checks("bob:" + cheapHash);
    checks.add("bob", "secret");
    checks.add("bob", "Secret");
    checks.add("eve", "secret");
    EXPECT_EQ("---", checks.verdicts) << "never from within the call";
    checks.io.run();
    EXPECT_EQ("rww", checks.verdicts);
    EXPECT_FALSE(hasChildren());
}

TEST(PasswordCheck, ItReportsUsersWhoMayOnlyRead) {
    Checks checks("bob:" + cheapHash + ":read-only");
    checks.add("bob", "secret");
    checks.add("bob", "Secret");
    checks.io.run();
    EXPECT_EQ("ow", checks.verdicts);
}

TEST(PasswordCheck, TheChildHasEndedWhenItsVerdictIsReported) {
    Users users("bob:" + cheapHash);
    boost::asio::io_context io(1);
    PasswordCheck check(io, users);
    bool isLeft = true;
    check.check("bob", "secret", [&](Verdict) { isLeft = hasChildren(); });
    io.run();
    EXPECT_FALSE(isLeft);
}

TEST(PasswordCheck, ChecksBeyondTheLimitWait) {
    Checks checks("bob:" + cheapHash, {1, 3, 10s});
    for (const char* const password : {"secret", "x", "secret", "y"})
        checks.add("bob", password);
    checks.io.run();
    EXPECT_EQ("rwrw", checks.verdicts);
    EXPECT_EQ("0123", checks.order);
}

TEST(PasswordCheck, AsManyChecksRunAtATimeAsAllowed) {
    Checks checks("slow:" + endlessHash + "\nbob:" + cheapHash, {2, 1, 1h});
    checks.add("slow", "secret");
    checks.add("bob", "secret");
    checks.add("bob", "x");
    while (checks.order.size() < 2)
        checks.io.run_one();
    EXPECT_EQ("-rw", checks.verdicts);
    EXPECT_EQ("12", checks.order);
}

TEST(PasswordCheck, ACheckBeyondTheQueueEndsUnchecked) {
    Checks checks("slow:" + endlessHash, {1, 1, 1h});
    checks.add("slow", "secret");
    checks.add("slow", "secret");
    checks.add("slow", "secret");
    EXPECT_EQ("---", checks.verdicts) << "never from within the call";
    checks.io.poll();
    EXPECT_EQ("--u", checks.verdicts);
}

TEST(PasswordCheck, ACheckThatTakesTooLongIsEnded) {
    Checks checks("slow:" + endlessHash, {1, 1, 10ms});
    checks.add("slow", "secret");
    checks.add("slow", "secret");
    checks.io.run();
    EXPECT_EQ("uu", checks.verdicts);
    EXPECT_FALSE(hasChildren());
}

TEST(PasswordCheck, ACheckOfAnUnknownUserTakesAsLongAsOfAKnownOne) {
    Checks checks(std::string(50, '\n') + "slow:" + endlessHash, {1, 0, 100ms});
    checks.add("eve", "secret");
    checks.io.run();
    EXPECT_EQ("u", checks.verdicts);
}

TEST(PasswordCheck, ChildrenEndWithTheIoContext) {
    {
        Checks checks("slow:" + endlessHash, {2, 1, 1h});
        checks.add("slow", "secret");
        checks.add("slow", "secret");
        checks.add("slow", "secret");
        checks.io.poll();
        ASSERT_TRUE(hasChildren());
    }
    EXPECT_FALSE(hasChildren());
}

TEST(PasswordCheck, AConnectionEndsWhenTheParentClosesIt) {
    Checks checks("slow:" + endlessHash);
    Connection connection;
    checks.add("slow", "secret");
    EXPECT_TRUE(connection.endsWhenClosed());
}

TEST(PasswordCheck, AChildEndsWithItsParent) {
    ASSERT_EQ(0, ::prctl(PR_SET_CHILD_SUBREAPER, 1)); // orphans become ours
    const pid_t parent = ::fork();
    if (parent == 0) {
        // Takes a few seconds, if it is not killed.
        Checks checks("slow:$6$rounds=3000000" + hashEnd);
        Connection connection;
        checks.add("slow", "secret");
        ::_exit(connection.endsWhenClosed() ? 0 : 1); // after the child has begun
    }
    int status = 0;
    ASSERT_EQ(parent, ::waitpid(parent, &status, 0));
    EXPECT_EQ(0, status);
    ASSERT_GT(::waitpid(-1, &status, 0), 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST(PasswordCheck, TheParentStillReceivesSignals) {
    Checks checks("bob:" + cheapHash);
    checks.add("bob", "secret");
    sigset_t blocked;
    ASSERT_EQ(0, ::sigprocmask(SIG_SETMASK, nullptr, &blocked));
    EXPECT_EQ(0, ::sigismember(&blocked, SIGTERM));
    checks.io.run();
}

TEST(PasswordCheck, AStopSignalDoesNotEndTheChild) {
    Checks checks("bob:$6$rounds=50000" + hashEnd);
    checks.add("bob", "secret");
    ASSERT_GT(onlyChild(), 0);
    ::kill(onlyChild(), SIGTERM);
    checks.io.run();
    EXPECT_EQ("w", checks.verdicts);
}

TEST(PasswordCheck, WithoutADescriptorAPasswordIsUnchecked) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers need descriptors themselves";
#endif
    Checks checks("bob:" + cheapHash);
    rlimit before;
    ASSERT_EQ(0, ::getrlimit(RLIMIT_NOFILE, &before));
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &none));
    checks.add("bob", "secret");
    EXPECT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &before));
    EXPECT_EQ("-", checks.verdicts) << "never from within the call";
    checks.add("bob", "secret");
    checks.io.run();
    EXPECT_EQ("ur", checks.verdicts);
}
