// `--trace`: the library's trace of one command.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace owbctl_test {
namespace {

class TraceOption : public testing::Test {
protected:
    /** Runs a command in its own current directory, with its own directory for temporary files. */
    support::ProgramResult run(const std::string& arguments) const {
        return shell("cd '" + m_directory.path() + "'; TMPDIR='" + m_temporary.path() +
                     "' \"$OWBCTL\" --url " + m_peer.url() + " " + arguments);
    }
    std::string log() const { return support::readFile(m_directory.file("my log")); }

    support::TempDir m_directory;
    support::TempDir m_temporary;
    support::ScriptedPeer m_peer{{instances({})}};
};

TEST_F(TraceOption, TheFileHoldsTheTraceOfThisCommand) {
    m_directory.write("my log", "of yesterday\n");
    const support::ProgramResult result = run("get 14 --trace 'my log'");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(log().find("of yesterday"), std::string::npos);
    EXPECT_NE(log().find("OWB_URLSet:149: Set URL: '" + m_peer.url() + "'\n"), std::string::npos) << log();
    EXPECT_NE(log().find(":OWB_getGroup:"), std::string::npos) << log();
}

TEST_F(TraceOption, TheFileIsReadableByItsOwnerOnly) {
    run("get 14 --trace 'my log'");
    struct stat status;
    ASSERT_EQ(stat(m_directory.file("my log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u) << "the URL may hold a password";
}

TEST_F(TraceOption, ASwitchFileHasNoEffect) {
    m_directory.write("vdxDebug", m_directory.file("others") + "\n");
    run("get 14 --trace 'my log'");
    EXPECT_FALSE(std::filesystem::exists(m_directory.file("others")));
    EXPECT_NE(log(), "");
    run("get 14");
    EXPECT_TRUE(std::filesystem::exists(m_directory.file("others"))) << "it has an effect without the option";
}

TEST_F(TraceOption, ADashMeansStandardError) {
    const support::ProgramResult result = run("get 14 --trace -");
    EXPECT_NE(result.err.find("OWB_URLSet:149: Set URL: '"), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n");
}

TEST_F(TraceOption, TraceAndMessagesInOneFileDoNotOverwriteEachOther) {
    const support::ProgramResult result =
        shell("cd '" + m_directory.path() + "'; \"$OWBCTL\" --url " + deadUrl() + " get 14 --trace - 2>both");
    EXPECT_EQ(result.exitCode, 15);
    const std::string both = support::readFile(m_directory.file("both"));
    EXPECT_NE(both.find(":OWB_URLSet:149: Set URL: '"), std::string::npos) << both;
    EXPECT_NE(both.find("\nowbctl: group 14: no such file or directory: "), std::string::npos) << both;
}

TEST_F(TraceOption, NoTemporaryFileRemains) {
    run("get 14 --trace 'my log'");
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary.path()));
}

TEST_F(TraceOption, ADirectoryThatCannotBeCreatedIsReported) {
    const support::ProgramResult result =
        shell("TMPDIR=/proc \"$OWBCTL\" --url " + m_peer.url() + " get 14 --trace -");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("/proc"), std::string::npos) << result.err;
}

TEST_F(TraceOption, ARemovedCurrentDirectoryIsNoError) {
    const support::ProgramResult result =
        shell("mkdir '" + m_directory.file("gone") + "'; cd '" + m_directory.file("gone") + "'; rmdir '" +
              m_directory.file("gone") + "'; \"$OWBCTL\" --url " + m_peer.url() + " get 14 --trace -");
    EXPECT_EQ(result.exitCode, 0) << result.err;
}

TEST_F(TraceOption, AStandardErrorThatCannotBeReopenedIsReportedBeforeAnythingIsSent) {
    int ends[2]; // such as the journal gives a service
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    ASSERT_LT(ends[1], 10) << "the shell takes one digit";
    const support::ProgramResult result = run("get 14 --trace - 2>&" + std::to_string(ends[1]));
    close(ends[1]);
    char text[256] = "";
    EXPECT_GE(read(ends[0], text, sizeof text - 1), 0);
    close(ends[0]);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_STREQ(text, "owbctl: cannot trace to standard error: No such device or address\n");
    EXPECT_EQ(m_peer.connections(), 0u);
}

TEST_F(TraceOption, AFileThatCannotBeWrittenIsReportedBeforeAnythingIsSent) {
    const support::ProgramResult result = run("get 14 --trace /nowhere/log");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: /nowhere/log: No such file or directory\n");
    EXPECT_EQ(m_peer.connections(), 0u);
}

} // namespace
} // namespace owbctl_test
