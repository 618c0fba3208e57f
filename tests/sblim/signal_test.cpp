// Signals and children of the caller.
#include "Run.hpp"

#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using support::inChild;
using support::TempDir;

volatile sig_atomic_t calls = 0;

void count(int) {
    ++calls;
}

void reapAll(int) {
    const int saved = errno;
    while (::waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    ++calls;
    errno = saved;
}

void handle(int signal, void (*handler)(int), int flags = 0) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    EXPECT_EQ(0, ::sigaction(signal, &action, nullptr));
}

void expectAllStatuses() {
    EXPECT_EQ(0, run("true").status);
    EXPECT_EQ(7, run("exit 7").status);
    EXPECT_EQ(128 + 15, run("kill -15 $$").status);
    EXPECT_EQ(127, run("no-tool-of-this-name").status);
    EXPECT_EQ(-1, run(std::string(300000, 'x')).status);
    EXPECT_EQ((Lines{"one", "two"}), run("cat", {"one", "two"}).out);
}

void expectNoChild() {
    EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
    EXPECT_EQ(ECHILD, errno);
}

TEST(Signals, TheChildIsAlwaysCollected) {
    const TempDir directory;
    inChild(directory.path(), [] {
        expectAllStatuses();
        run("kill -9 0");
        run("exec >&- 2>&-; sleep 0.1");
        expectNoChild();
    });
}

TEST(Signals, OtherChildrenOfTheCallerAreNotCollected) {
    const TempDir directory;
    inChild(directory.path(), [] {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(9);
        expectAllStatuses();
        int status = 0;
        EXPECT_EQ(child, ::waitpid(child, &status, 0));
        EXPECT_EQ(9, WEXITSTATUS(status));
    });
}

TEST(Signals, TheStatusIsReturnedIfTheCallerIgnoresSIGCHLD) {
    const TempDir directory;
    inChild(directory.path(), [] {
        handle(SIGCHLD, SIG_IGN);
        expectAllStatuses();
        struct sigaction action {};
        EXPECT_EQ(0, ::sigaction(SIGCHLD, nullptr, &action));
        EXPECT_EQ(SIG_IGN, action.sa_handler);
    });
}

TEST(Signals, TheStatusIsReturnedIfTheCallerWantsNoZombies) {
    const TempDir directory;
    inChild(directory.path(), [] {
        handle(SIGCHLD, count, SA_NOCLDWAIT);
        expectAllStatuses();
        EXPECT_LT(0, calls);
    });
}

TEST(Signals, TheStatusIsReturnedIfAHandlerCollectsAllChildren) {
    const TempDir directory;
    inChild(directory.path(), [] {
        handle(SIGCHLD, reapAll);
        for (int i = 0; i < 20; ++i)
            expectAllStatuses();
        EXPECT_LT(0, calls);
    });
}

TEST(Signals, TheCommandHasDefaultDispositionsAndAnEmptyMask) {
    const TempDir directory;
    inChild(directory.path(), [] {
        for (const int signal : {SIGPIPE, SIGHUP, SIGINT, SIGCHLD, SIGRTMIN + 3})
            handle(signal, SIG_IGN);
        sigset_t mask;
        ::sigfillset(&mask);
        ::sigprocmask(SIG_SETMASK, &mask, nullptr);
        const Lines lines = run("while read name value; do case $name in Sig[BI]*) echo $value; esac; done "
                                "</proc/$$/status")
                                .out;
        ASSERT_EQ(2U, lines.size());
        EXPECT_EQ("0000000000000000", lines[0]);
        const unsigned long long ofCLibrary = 3ULL << 31; // 32 and 33, which posix_spawn(3) ignores
        EXPECT_EQ(0U, std::stoull(lines[1], nullptr, 16) & ~ofCLibrary) << lines[1];
    });
}

TEST(Signals, DispositionsAndMaskOfTheCallerDoNotChange) {
    const TempDir directory;
    inChild(directory.path(), [] {
        handle(SIGPIPE, SIG_IGN);
        handle(SIGUSR1, count);
        sigset_t mask;
        ::sigemptyset(&mask);
        ::sigaddset(&mask, SIGUSR2);
        ::sigprocmask(SIG_SETMASK, &mask, nullptr);
        struct sigaction before[65] = {};
        for (int signal = 1; signal <= 64; ++signal)
            ::sigaction(signal, nullptr, &before[signal]);
        expectAllStatuses();
        for (int signal = 1; signal <= 64; ++signal) {
            struct sigaction after {};
            ::sigaction(signal, nullptr, &after);
            EXPECT_EQ(before[signal].sa_handler, after.sa_handler) << signal;
            EXPECT_EQ(before[signal].sa_flags, after.sa_flags) << signal;
        }
        sigset_t maskBehind;
        ::sigprocmask(SIG_SETMASK, nullptr, &maskBehind);
        for (int signal = 1; signal <= 64; ++signal)
            EXPECT_EQ(signal == SIGUSR2 ? 1 : 0, ::sigismember(&maskBehind, signal)) << signal;
    });
}

TEST(Signals, ATimerOfTheCallerKeepsRunning) {
    const TempDir directory;
    inChild(directory.path(), [] {
        const itimerval inAnHour = {{0, 0}, {3600, 0}};
        ::setitimer(ITIMER_REAL, &inAnHour, nullptr);
        expectAllStatuses();
        itimerval left{};
        ::getitimer(ITIMER_REAL, &left);
        EXPECT_LT(3000, left.it_value.tv_sec);
    });
}

TEST(Signals, DoNotDisturbTheCall) {
    const TempDir directory;
    inChild(directory.path(), [] {
        handle(SIGALRM, count); // without SA_RESTART
        const itimerval often = {{0, 500}, {0, 500}};
        ::setitimer(ITIMER_REAL, &often, nullptr);
        const Outcome result = run("seq 100000; exec >&- 2>&-; sleep 0.2; exit 7", Lines(1000, "input"));
        const itimerval none = {};
        ::setitimer(ITIMER_REAL, &none, nullptr);
        EXPECT_EQ(7, result.status);
        EXPECT_EQ(100000U, result.out.size());
        EXPECT_LT(10, calls);
        expectNoChild();
    });
}

TEST(Signals, UnreadInputCausesNoSignal) {
    const TempDir directory;
    inChild(directory.path(), [] {
        handle(SIGPIPE, count);
        EXPECT_EQ(0, run("exec <&-", Lines(20, std::string(100000, 'x'))).status);
        EXPECT_EQ(0, calls);
    });
}

TEST(Signals, TheCommandLeadsItsOwnProcessGroup) {
    const Lines lines = run("cut -d ' ' -f 5 /proc/$$/stat").out;
    ASSERT_EQ(1U, lines.size());
    EXPECT_NE(std::to_string(::getpgrp()), lines[0]);
}

// With the limit of one further process, the shell starts but its child does not.
TEST(Signals, TheProcessLimitFailsTheCall) {
    const TempDir directory;
    inChild(directory.path(), [] {
        const uid_t unprivileged = 65534; // the limit does not apply to root
        ASSERT_TRUE(::geteuid() != 0 || ::setresuid(unprivileged, unprivileged, unprivileged) == 0);
        rlimit processes{};
        ASSERT_EQ(0, ::getrlimit(RLIMIT_NPROC, &processes));
        int failures = 0;
        for (processes.rlim_cur = 1;; ++processes.rlim_cur) {
            ASSERT_EQ(0, ::setrlimit(RLIMIT_NPROC, &processes));
            char* something[] = {nullptr};
            char** out = something;
            const int status = runcommand("exit 3", nullptr, &out, nullptr);
            freeresultbuf(out);
            if (status == 3)
                break;
            ASSERT_EQ(-1, status) << processes.rlim_cur;
            EXPECT_EQ(nullptr, out);
            expectNoChild();
            ++failures;
        }
        EXPECT_LE(2, failures);
    });
}

} // namespace
