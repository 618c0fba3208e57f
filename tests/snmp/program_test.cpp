// The program: its command line, and how it starts and stops.
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <csignal>
#include <gtest/gtest.h>

using namespace support;

namespace {

ProgramResult run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), OWB_AGENTX);
    return runProgram(arguments);
}

/** A subagent without an object manager. */
class SubagentTest : public testing::Test {
protected:
    Daemon started(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {OWB_AGENTX, "--url", urlOfNothing()});
        return Daemon(arguments);
    }
    /** The first line of the log about the master. */
    static std::string lineOfMaster(Daemon& daemon) {
        for (;;) {
            const std::string line = daemon.nextErrorLine();
            if (line.rfind("owb-agentx: object manager", 0) != 0)
                return line;
        }
    }

    TempDir directory;

private:
    std::string urlOfNothing() const {
        std::string url = "owbinary.wbem://localhost:";
        for (const char c : directory.file("none"))
            url += c == '/' ? std::string("%2f") : std::string(1, c);
        return url;
    }
};

} // namespace

TEST(SubagentArguments, TheVersionIsPrinted) {
    const ProgramResult result = run({"--version"});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ(0u, result.out.find("owb-agentx ")) << result.out;
}

TEST(SubagentArguments, AnInvalidArgumentEndsWithStatus2AndSaysWhatIsWrong) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"--master", ""}, "'' is not the path of a socket or tcp:ADDRESS:PORT (tcp:127.0.0.1:705)"},
        {{"--master", "tcp:localhost:705"}, "'tcp:localhost:705' is not the path of a socket"},
        {{"--context", std::string(33, 'x')}, "a context has at most 32 bytes"},
        {{"--url", ""}, "may not be empty"},
        {{"--counters-age", "0"}, "--counters-age"},
        {{"--tables-age", "86401"}, "--tables-age"},
        {{"--packages-age", "x"}, "--packages-age"},
        {{"--longest-age", "-1"}, "--longest-age"},
        {{"more"}, "more"}};
    for (const auto& [arguments, reason] : cases) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(2, result.exitCode) << arguments[0];
        EXPECT_EQ(0u, result.err.find("owb-agentx: command line: ")) << result.err;
        EXPECT_NE(std::string::npos, result.err.find(reason)) << result.err;
        EXPECT_EQ("", result.out);
    }
}

TEST_F(SubagentTest, WithoutAMasterItRunsUntilASignal) {
    for (const int number : {SIGTERM, SIGINT}) {
        const std::string master = directory.file("master");
        Daemon daemon = started({"--master", master, "--context", ""});
        EXPECT_EQ("owb-agentx: master " + master + ": cannot connect: No such file or directory",
                  lineOfMaster(daemon));
        daemon.signal(number);
        EXPECT_EQ(0, daemon.wait());
    }
}
