// `--timeout`.
#include "Owbctl.hpp"
#include "support/Manager.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

TEST(Timeout, ASilentObjectManagerEndsTheCommand) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    const support::ProgramResult result = owbctl({"--url", peer.url(), "get", "4", "--timeout", "0.2"});
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: timed out after 0.2 s, waiting for " + peer.socketPath() + ", group 4\n");
}

TEST(Timeout, TheJsonDocumentHoldsTheTimeout) {
    const support::ScriptedPeer peer({support::Step::staySilent()}, support::Listening::ipv4);
    const support::ProgramResult result =
        owbctl({"--url", peer.url(), "get", "4", "--timeout", "0.2", "-o", "json"});
    EXPECT_EQ(result.exitCode, 124);
    const std::string error =
        "timed out after 0.2 s, waiting for localhost port " + std::to_string(peer.port()) + ", group 4";
    EXPECT_EQ(nlohmann::json::parse(result.out),
              (nlohmann::json{{"format_version", 1}, {"error", error}, {"exit_status", 124}}));
}

TEST(Timeout, AWatchEndsAfterItsLastCompleteSample) {
    const support::ProgramResult result =
        owbctlAt({instances({}), support::Step::staySilent()},
                 {"watch", "14", "--interval", "0.1", "--timeout", "2", "-o", "json"});
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_EQ(nlohmann::json::parse(result.out)["sample"], 1) << "exactly one document";
}

TEST(Timeout, EachReadingOfAWatchHasItsOwnTime) {
    const support::ProgramResult result =
        owbctlAt({instances({})},
                 {"watch", "14", "--interval", "0.3", "--count", "4", "--timeout", "0.6", "-o", "line"});
    EXPECT_EQ(result.exitCode, 0) << "the watch takes longer than a reading may: " << result.err;
}

TEST(Timeout, OtherCommandsHaveOneTimeForAllReadings) {
    const support::ScriptedPeer peer({instances({}), support::Step::staySilent()});
    const support::ProgramResult result =
        owbctl({"--url", peer.url(), "get", "14", "6", "--timeout", "0.5", "-o", "line"});
    EXPECT_EQ(result.exitCode, 124);
}

TEST(Timeout, ZeroMeansNoLimit) {
    EXPECT_EQ(owbctlAt({instances({})}, {"get", "14", "--timeout", "0"}).exitCode, 0);
    const support::ScriptedPeer peer({support::Step::staySilent()});
    EXPECT_EQ(shell("timeout 1 \"$OWBCTL\" --url " + peer.url() + " get 4 --timeout 0").exitCode, 124)
        << "the one of timeout(1)";
}

TEST(Timeout, TheLimitIsThirtySecondsByDefault) {
    const support::ProgramResult result = owbctl({"--help"});
    EXPECT_NE(result.out.find("default: 30 for each reading"), std::string::npos) << result.out;
}

TEST(Timeout, AfterTwoSecondsATerminalShowsWhatIsWaitedFor) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    const std::string out =
        shell("script -qec '\"$OWBCTL\" --url " + peer.url() + " get 4 --timeout 3.5 >/dev/null' /dev/null")
            .out;
    const std::string line = "\r\x1b[Kowbctl: waiting for " + peer.socketPath() + ", group 4 (";
    EXPECT_NE(out.find(line + "2 s)" + line + "3 s)\r\x1b[Kowbctl: timed out after 3.5 s, waiting for " +
                       peer.socketPath() + ", group 4"),
              std::string::npos)
        << out;
}

TEST(Timeout, TheLineOnATerminalIsRemovedAfterTheAnswer) {
    support::Manager manager;
    manager.daemon().signal(SIGSTOP);
    const std::string out =
        shell("(sleep 2.5; kill -CONT " + std::to_string(manager.daemon().pid()) +
              ")& script -qec '\"$OWBCTL\" --url " + manager.url() + " get 4 >/dev/null' /dev/null")
            .out;
    const std::string line = "\r\x1b[Kowbctl: waiting for " + manager.socketPath() + ", group 4 (2 s)";
    EXPECT_NE(out.find(line + "\r\x1b[K"), std::string::npos) << out;
    EXPECT_EQ(out.substr(out.size() - 4), "\r\x1b[K") << out;
}

TEST(Timeout, AFileReceivesNoLine) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    EXPECT_EQ(owbctl({"--url", peer.url(), "get", "4", "--timeout", "2.5"}).err,
              "owbctl: timed out after 2.5 s, waiting for " + peer.socketPath() + ", group 4\n");
}

TEST(Timeout, TheTimerRunsBeforeTheFirstTrace) {
    const support::TempDir directory;
    const support::ProgramResult result =
        shell("cd '" + directory.path() + "'; mkfifo vdxDebug; \"$OWBCTL\" groups --timeout 0.2");
    EXPECT_EQ(result.exitCode, 124) << "a named pipe without a writer";
    EXPECT_EQ(result.err, "owbctl: timed out after 0.2 s, waiting for the log of the trace\n");
}

TEST(Timeout, AFullPipeOfMessagesDoesNotBlockTheEnd) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    const support::TempDir directory;
    const support::ProgramResult result =
        shell("cd '" + directory.path() +
              "'; mkfifo pipe; exec 3<>pipe; LC_ALL=C dd if=/dev/zero of=pipe oflag=nonblock; " +
              "\"$OWBCTL\" --url " + peer.url() + " get 4 --timeout 0.2 2>&3");
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_NE(result.err.find("Resource temporarily unavailable"), std::string::npos)
        << "the pipe was not full";
}

TEST(Timeout, TheProgressOnATerminalIsCleared) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    const std::string out =
        shell("script -qec '\"$OWBCTL\" --url " + peer.url() + " get 4 14 --timeout 1 >/dev/null' /dev/null")
            .out;
    EXPECT_NE(out.find("1 of 2\r\x1b[Kowbctl: timed out after 1 s"), std::string::npos) << out;
}

TEST(Timeout, ACommandThatEndsInTimeIsNotAffected) {
    EXPECT_EQ(owbctlAt({instances({})}, {"get", "14", "--timeout", "600"}).exitCode, 0);
}

TEST(Timeout, AParentThatIgnoresAlarmsHasNoEffect) {
    const support::ScriptedPeer peer({support::Step::staySilent()});
    const support::ProgramResult result =
        shell("trap '' ALRM; \"$OWBCTL\" --url " + peer.url() + " get 4 --timeout 0.2");
    EXPECT_EQ(result.exitCode, 124);
}

} // namespace
} // namespace owbctl_test
