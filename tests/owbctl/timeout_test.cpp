// `--timeout`.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

TEST(Timeout, ASilentObjectManagerEndsTheCommand) {
    const support::ProgramResult result =
        owbctlAt({support::Step::staySilent()}, {"get", "4", "--timeout", "0.2"});
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: timed out after 0.2 s\n");
}

TEST(Timeout, TheJsonDocumentHoldsTheTimeout) {
    const support::ProgramResult result =
        owbctlAt({support::Step::staySilent()}, {"get", "4", "--timeout", "0.2", "-o", "json"});
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_EQ(nlohmann::json::parse(result.out),
              nlohmann::json::parse(
                  R"({"format_version": 1, "error": "timed out after 0.2 s", "exit_status": 124})"));
}

TEST(Timeout, AWatchEndsAfterItsLastCompleteSample) {
    const support::ProgramResult result =
        owbctlAt({instances({}), support::Step::staySilent()},
                 {"watch", "14", "--interval", "0.1", "--timeout", "2", "-o", "json"});
    EXPECT_EQ(result.exitCode, 124);
    EXPECT_EQ(nlohmann::json::parse(result.out)["sample"], 1) << "exactly one document";
}

TEST(Timeout, TheTimerRunsBeforeTheFirstTrace) {
    const support::TempDir directory;
    const support::ProgramResult result =
        shell("cd '" + directory.path() + "'; mkfifo vdxDebug; \"$OWBCTL\" groups --timeout 0.2");
    EXPECT_EQ(result.exitCode, 124) << "a named pipe without a writer";
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
