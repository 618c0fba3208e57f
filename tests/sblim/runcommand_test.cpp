// Output, input and exit status of a command.
#include "Run.hpp"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <thread>

namespace {

TEST(RunCommand, ReturnsTheLinesOfBothOutputs) {
    const Outcome result = run("echo one; echo two; echo three >&2");
    EXPECT_EQ(0, result.status);
    EXPECT_EQ((Lines{"one", "two"}), result.out);
    EXPECT_EQ(Lines{"three"}, result.err);
}

TEST(RunCommand, TextAfterTheLastNewlineIsALine) {
    EXPECT_EQ((Lines{"one", "two"}), run("printf 'one\\ntwo'").out);
}

TEST(RunCommand, EmptyLinesAreLines) {
    EXPECT_EQ((Lines{"", "one", "", "", "two", ""}), run("printf '\\none\\n\\n\\ntwo\\n\\n'").out);
}

TEST(RunCommand, NoOutputIsAnArrayWithoutLines) {
    char** out = nullptr;
    char** err = nullptr;
    ASSERT_EQ(0, runcommand("true", nullptr, &out, &err));
    ASSERT_TRUE(out && err);
    EXPECT_EQ(nullptr, *out);
    EXPECT_EQ(nullptr, *err);
    freeresultbuf(out);
    freeresultbuf(err);
}

TEST(RunCommand, ANulByteStaysInItsLine) {
    char** out = nullptr;
    ASSERT_EQ(0, runcommand("printf '\\000a\\nb\\000c\\nd\\n'", nullptr, &out, nullptr));
    EXPECT_EQ(0, std::memcmp("\0a", out[0], 3));
    EXPECT_EQ(0, std::memcmp("b\0c", out[1], 4));
    EXPECT_STREQ("d", out[2]);
    EXPECT_EQ(nullptr, out[3]);
    freeresultbuf(out);
}

TEST(RunCommand, SeventyThousandLinesStayInOrder) {
    const Lines lines = run("seq 70000").out;
    ASSERT_EQ(70000U, lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        ASSERT_EQ(std::to_string(i + 1), lines[i]);
}

TEST(RunCommand, LinesMayHaveTenMegabytes) {
    const Outcome result =
        run("for letter in a b; do head -c 10000000 /dev/zero | tr '\\000' $letter; echo; done");
    EXPECT_EQ(0, result.status);
    ASSERT_EQ(2U, result.out.size());
    EXPECT_TRUE(std::string(10000000, 'a') == result.out[0]);
    EXPECT_TRUE(std::string(10000000, 'b') == result.out[1]);
}

TEST(RunCommand, BothOutputsMayBeLargerThanAPipe) {
    const Outcome result = run("seq 100000 >&2; seq 100000; seq 100000 >&2");
    EXPECT_EQ(100000U, result.out.size());
    EXPECT_EQ(200000U, result.err.size());
}

TEST(RunCommand, InputLinesEndWithNewlines) {
    EXPECT_EQ((Lines{"one", "", "two", "11"}), run("cat; echo 11", {"one", "", "two"}).out);
    EXPECT_EQ((Lines{"9"}), run("wc -c", {"one", "", "two"}).out);
}

TEST(RunCommand, AnInputWithoutLinesIsEmpty) {
    EXPECT_EQ(Lines{"0"}, run("wc -c", {}).out);
}

TEST(RunCommand, InputMayBeLargerThanAPipe) {
    const Lines input(20, std::string(100000, 'x'));
    const Outcome result = run("cat", input);
    EXPECT_TRUE(input == result.out);
}

TEST(RunCommand, InputMayStayUnreadOrBeReadInPart) {
    const Lines input(20, std::string(100000, 'x'));
    EXPECT_EQ(0, run("exec <&-", input).status);
    EXPECT_EQ(Lines{"xx"}, run("head -c 2", input).out);
}

TEST(RunCommand, WithoutInputTheCommandReadsDevNull) {
    EXPECT_EQ(Lines{"/dev/null"}, run("readlink /proc/$$/fd/0; :").out);
}

TEST(RunCommand, OutputThatIsNotRequestedGoesToDevNull) {
    char** lines = nullptr;
    EXPECT_EQ(4, runcommand("echo lost; readlink /proc/$$/fd/1 | cat >&2; exit 4", nullptr, nullptr, &lines));
    EXPECT_EQ(Lines{"/dev/null"}, takeLines(lines));
    EXPECT_EQ(5, runcommand("echo lost >&2; readlink /proc/$$/fd/2; exit 5", nullptr, &lines, nullptr));
    EXPECT_EQ(Lines{"/dev/null"}, takeLines(lines));
    EXPECT_EQ(6, runcommand("echo lost; exit 6", nullptr, nullptr, nullptr));
}

TEST(RunCommand, ReturnsTheExitStatus) {
    for (const int status : {0, 1, 2, 126, 127, 128, 255})
        EXPECT_EQ(status, run("exit " + std::to_string(status)).status);
}

TEST(RunCommand, AFailingCommandStillReturnsItsLines) {
    const Outcome result = run("echo one; echo two >&2; false");
    EXPECT_EQ(1, result.status);
    EXPECT_EQ(Lines{"one"}, result.out);
    EXPECT_EQ(Lines{"two"}, result.err);
}

TEST(RunCommand, AMissingCommandReturns127AndTheMessageOfTheShell) {
    const Outcome result = run("no-tool-of-this-name");
    EXPECT_EQ(127, result.status);
    EXPECT_EQ(Lines{}, result.out);
    ASSERT_EQ(1U, result.err.size());
    EXPECT_NE(std::string::npos, result.err[0].find("not found"));
}

TEST(RunCommand, ASignalThatEndsTheCommandIsReportedOnlyByTheStatus) {
    for (const int signal : {1, 6, 9, 11, 15}) {
        const Outcome result = run("echo before; kill -" + std::to_string(signal) + " $$; echo after");
        EXPECT_EQ(128 + signal, result.status);
        EXPECT_EQ(Lines{"before"}, result.out);
        EXPECT_EQ(Lines{}, result.err);
    }
}

TEST(RunCommand, ASignalMayEndTheWholeProcessGroup) {
    const Outcome result = run("echo before; kill -9 0");
    EXPECT_EQ(128 + 9, result.status);
    EXPECT_EQ(Lines{"before"}, result.out);
}

TEST(RunCommand, ACommandIsNeverAnOptionOfTheShell) {
    EXPECT_EQ(127, run("-v").status);
}

TEST(RunCommand, ASyntaxErrorFails) {
    const Outcome result = run("echo one; )");
    EXPECT_NE(0, result.status);
    EXPECT_EQ(Lines{}, result.out);
    EXPECT_NE(Lines{}, result.err);
}

TEST(RunCommand, AFailureToRunLeavesNullPointers) {
    const std::string tooLong(300000, 'x'); // longer than an argument may be
    for (const char* command : {static_cast<const char*>(nullptr), tooLong.c_str()}) {
        char* something[] = {nullptr};
        char** out = something;
        char** err = something;
        EXPECT_EQ(-1, runcommand(command, nullptr, &out, &err));
        EXPECT_EQ(nullptr, out);
        EXPECT_EQ(nullptr, err);
    }
    EXPECT_EQ(-1, runcommand(tooLong.c_str(), nullptr, nullptr, nullptr));
}

TEST(RunCommand, WaitsForACommandThatClosesItsOutput) {
    const Outcome result = run("echo one; exec >&- 2>&-; sleep 0.2; exit 5");
    EXPECT_EQ(5, result.status);
    EXPECT_EQ(Lines{"one"}, result.out);
}

TEST(RunCommand, WaitsForTheOutputOfABackgroundProcess) {
    const Outcome result = run("(sleep 0.2; echo late; exit 6) & echo early; exit 3");
    EXPECT_EQ(3, result.status);
    EXPECT_EQ((Lines{"early", "late"}), result.out);
    EXPECT_EQ(Lines{"late"}, run("(sleep 0.2; echo late >&2) >/dev/null &").err);
}

TEST(RunCommand, LinesMayBeReorderedAndDroppedBeforeTheirRelease) {
    char** out = nullptr;
    ASSERT_EQ(0, runcommand("echo one; echo two; echo three", nullptr, &out, nullptr));
    std::reverse(out, out + 3);
    out[1] = nullptr;
    EXPECT_STREQ("three", *out);
    freeresultbuf(out);
}

TEST(RunCommand, ReleasingANullPointerDoesNothing) {
    freeresultbuf(nullptr);
}

TEST(RunCommand, IsThreadSafe) {
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([number] {
            const std::string text = std::to_string(number);
            for (int i = 0; i < 20; ++i) {
                const Outcome result = run("cat; exit " + text, {text});
                EXPECT_EQ(number, result.status);
                EXPECT_EQ(Lines{text}, result.out);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
