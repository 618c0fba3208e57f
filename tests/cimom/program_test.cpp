// Programs of the host, run in a child process.
#include "service/ChildAnswer.hpp"
#include "support/TempDir.hpp"
#include "system/Program.hpp"

#include <boost/asio/steady_timer.hpp>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace cimom;
using namespace std::chrono_literals;

namespace {

/** The answer of a child, or "none". */
std::string answerTo(const service::Question& question, std::chrono::milliseconds limit = 30s) {
    boost::asio::io_context io(1);
    std::string result = "not called";
    service::askChild(io, question, limit, [&result](const std::optional<std::string>& answer) {
        result = answer.value_or("none");
    });
    io.run();
    return result;
}

/** The output of a program, after "failed: " if the program has failed. */
std::string printedBy(const std::vector<std::string>& command) {
    return answerTo([&command] {
        const ProgramOutput output = outputOf(command);
        return (output.hasSucceeded ? "" : "failed: ") + output.text;
    });
}

std::string script(const support::TempDir& directory, const std::string& lines) {
    const std::string path = directory.write("program", "#!/bin/sh\n" + lines);
    ::chmod(path.c_str(), 0700);
    return path;
}

} // namespace

TEST(Program, ItsOutputIsReturned) {
    EXPECT_EQ("one\ntwo\n", printedBy({"/usr/bin/printf", "one\\ntwo\\n"}));
    EXPECT_EQ("", printedBy({"/bin/true"}));
}

TEST(Program, ItsArgumentsReachNoShell) {
    const support::TempDir directory;
    const std::string made = directory.file("made");
    const std::string hostile =
        "a b'\"; touch '" + made + "' $(touch " + made + ")\n`touch " + made + "` * ~";
    EXPECT_EQ(hostile + "|" + hostile + "|", printedBy({"/usr/bin/printf", "%s|", hostile, hostile}));
    EXPECT_NE(0, ::access(made.c_str(), F_OK));
}

TEST(Program, ItsPathMayContainAnyCharacter) {
    const support::TempDir directory;
    const std::string path = directory.write("it's $HOME; exit\n/program", "#!/bin/sh\necho run\n");
    ::chmod(path.c_str(), 0700);
    EXPECT_EQ("run\n", printedBy({path}));
}

TEST(Program, ItsFailureIsReported) {
    const support::TempDir directory;
    EXPECT_EQ("failed: some\n", printedBy({script(directory, "echo some\nexit 3\n")}));
    EXPECT_EQ("failed: some\n", printedBy({script(directory, "echo some\nkill -KILL $$\n")}));
}

TEST(Program, ThatCannotBeStartedHasNoAnswer) {
    const support::TempDir directory;
    EXPECT_EQ("none", printedBy({directory.file("missing")}));
    EXPECT_EQ("none", printedBy({directory.write("file", "text")}));
}

TEST(Program, HasAnEmptyInputAndNoErrorOutputAndNoOtherDescriptor) {
    const support::TempDir directory;
    EXPECT_EQ("0 1 2 3\n", printedBy({script(directory, "cat\necho lost >&2\necho $(ls /proc/self/fd)\n")}))
        << "the fourth is the directory";
}

TEST(Program, HasDefaultSignalHandling) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const auto mask = [](const char* field) {
        const std::string line = printedBy({"/bin/grep", field, "/proc/self/status"});
        const unsigned long long ordinary = 0x7fffffff; // the C library reserves two signals
        return std::stoull(line.substr(line.find('\t') + 1), nullptr, 16) & ordinary;
    };
    EXPECT_EQ(0u, mask("SigIgn"));
    EXPECT_EQ(0u, mask("SigBlk"));
    std::signal(SIGPIPE, before);
}

TEST(Program, ThatPrintsTooMuchHasNoAnswer) {
    const auto zeros = [](std::size_t count) {
        const std::string bytes = std::to_string(count);
        return answerTo([bytes] {
            return std::to_string(outputOf({"/usr/bin/head", "-c", bytes, "/dev/zero"}).text.size());
        });
    };
    EXPECT_EQ(std::to_string(maximumOutput), zeros(maximumOutput));
    EXPECT_EQ("none", zeros(maximumOutput + 1));
}

TEST(Program, IsKilledWithItsChildrenAfterItsTimeLimit) {
    ASSERT_EQ(0, ::prctl(PR_SET_CHILD_SUBREAPER, 1)); // orphans become ours
    const support::TempDir directory;
    const std::string path = script(directory, "sleep 3600 &\nexec sleep 3600\n");
    EXPECT_EQ("none", answerTo([&path] { return outputOf({path}).text; }, 200ms));
    for (int status = 0; ::waitpid(-1, &status, 0) > 0;)
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
    EXPECT_EQ(ECHILD, errno);
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST(Program, ThatClosesItsOutputAndContinuesDoesNotBlockTheIoContext) {
    const support::TempDir directory;
    const std::string path = script(directory, "exec >&-\nexec sleep 3600\n");
    boost::asio::io_context io(1);
    std::string order;
    service::askChild(
        io, [&path] { return outputOf({path}).text; }, 300ms,
        [&order](const std::optional<std::string>& answer) { order += answer ? "answer" : "none"; });
    boost::asio::steady_timer other(io, 1ms);
    other.async_wait([&order](const boost::system::error_code&) { order += "other "; });
    io.run();
    EXPECT_EQ("other none", order);
}
