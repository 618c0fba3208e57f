// Commands that do not end without a signal.
#include "Run.hpp"
#include "TimeLimit.hpp"

#include "support/Child.hpp"
#include "support/Descriptors.hpp"
#include "support/TempDir.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using support::inChild;
using support::TempDir;

/** A pipe that shows when all processes with its writing end have ended. */
class Fifo {
public:
    Fifo()
        : m_path(m_directory.file("fifo")) {
        EXPECT_EQ(0, ::mkfifo(m_path.c_str(), 0600));
        m_end = ::open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        EXPECT_LE(0, m_end);
    }
    ~Fifo() { ::close(m_end); }
    Fifo(const Fifo&) = delete;
    Fifo& operator=(const Fifo&) = delete;

    const std::string& path() const { return m_path; }
    /** Waits until all writers have ended; returns the bytes written. */
    std::string contentAtTheEnd() const {
        std::string content;
        pollfd polled = {m_end, POLLIN, 0};
        while (::poll(&polled, 1, 20000) == 1) {
            char bytes[100];
            const ssize_t count = ::read(m_end, bytes, sizeof bytes);
            if (count <= 0)
                return content;
            content.append(bytes, static_cast<std::size_t>(count));
        }
        return content + " and still open";
    }

private:
    TempDir m_directory;
    std::string m_path;
    int m_end;
};

/** Milliseconds in which a command starts and prints its lines, even on a busy machine. */
const int enoughToStart = 1500;

/** Sets the time limit during its lifetime. */
class TimeLimit {
public:
    explicit TimeLimit(int milliseconds) { sblim::timeLimit = milliseconds; }
    ~TimeLimit() { sblim::timeLimit = 30000; }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;
};

TEST(TimeLimit, IsThirtySeconds) {
    EXPECT_EQ(30000, sblim::timeLimit);
}

TEST(TimeLimit, KillsAnEndlessCommandWithItsProcessGroupAndKeepsItsLines) {
    const TimeLimit limit(enoughToStart);
    const Fifo fifo;
    const std::set<int> before = support::openDescriptors();
    const Outcome result = run("exec 9>" + fifo.path() +
                               "; trap '' TERM INT HUP; echo one; printf two; echo three >&2; echo open >&9; "
                               "sleep 1000 & sleep 1000");
    EXPECT_EQ(128 + SIGKILL, result.status);
    EXPECT_EQ((Lines{"one", "two"}), result.out);
    EXPECT_EQ(Lines{"three"}, result.err);
    EXPECT_EQ("open\n", fifo.contentAtTheEnd());
    EXPECT_EQ(before, support::openDescriptors());
    EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
}

TEST(TimeLimit, KillsACommandThatNeverStopsPrinting) {
    const TimeLimit limit(enoughToStart);
    const Fifo fifo;
    char** out = nullptr;
    EXPECT_EQ(128 + SIGKILL,
              runcommand(("exec 9>" + fifo.path() + "; echo open >&9; while :; do echo one; done").c_str(),
                         nullptr, &out, nullptr));
    EXPECT_STREQ("one", *out);
    freeresultbuf(out);
    EXPECT_EQ("open\n", fifo.contentAtTheEnd());
}

TEST(TimeLimit, AppliesToACommandThatHasClosedItsOutput) {
    const TimeLimit limit(enoughToStart);
    const Fifo fifo;
    const Outcome result =
        run("exec 9>" + fifo.path() + "; echo open >&9; echo one; exec >&- 2>&-; sleep 1000");
    EXPECT_EQ(128 + SIGKILL, result.status);
    EXPECT_EQ("open\n", fifo.contentAtTheEnd());
}

TEST(TimeLimit, AppliesToABackgroundProcessThatKeepsTheOutputOpen) {
    const TimeLimit limit(enoughToStart);
    const Fifo fifo;
    const Outcome result = run("exec 9>" + fifo.path() + "; echo open >&9; sleep 1000 & echo one; exit 3");
    EXPECT_EQ(3, result.status);
    EXPECT_EQ(Lines{"one"}, result.out);
    EXPECT_EQ("open\n", fifo.contentAtTheEnd());
}

TEST(TimeLimit, KeepsTheStatusOfACommandAlreadyEndedByASignal) {
    const TimeLimit limit(enoughToStart);
    const Outcome result = run("trap '' TERM; sleep 1000 & trap - TERM; echo one; kill -TERM 0");
    EXPECT_EQ(128 + SIGTERM, result.status);
    EXPECT_EQ(Lines{"one"}, result.out);
}

TEST(TimeLimit, AppliesToTheOutputOfAProcessThatHasLeftTheProcessGroup) {
    const TimeLimit limit(enoughToStart);
    const Outcome result = run("setsid sleep 1000 & echo $!; exit 3");
    EXPECT_EQ(3, result.status);
    ASSERT_EQ(1U, result.out.size());
    EXPECT_EQ(0, ::kill(std::stoi(result.out[0]), SIGKILL)); // still running
}

TEST(TimeLimit, DoesNotWaitForABackgroundProcessWithoutTheOutput) {
    const Outcome result = run("sleep 1000 >/dev/null 2>&1 & echo $!; exit 3");
    EXPECT_EQ(3, result.status);
    ASSERT_EQ(1U, result.out.size());
    EXPECT_EQ(0, ::kill(std::stoi(result.out[0]), SIGKILL)); // still running
}

TEST(TimeLimit, AppliesToACommandThatStopsItself) {
    const TimeLimit limit(enoughToStart);
    EXPECT_EQ(128 + SIGKILL, run("kill -STOP 0").status);
}

TEST(TimeLimit, AppliesIfTheCallerIgnoresSIGCHLD) {
    const TempDir directory;
    inChild(directory.path(), [] {
        const TimeLimit limit(enoughToStart);
        ::signal(SIGCHLD, SIG_IGN);
        const Fifo fifo;
        EXPECT_EQ(128 + SIGKILL, run("exec 9>" + fifo.path() + "; echo open >&9; sleep 1000").status);
        EXPECT_EQ("open\n", fifo.contentAtTheEnd());
    });
}

} // namespace
