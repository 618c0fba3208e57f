#include "Client.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using support::Daemon;
using support::ProgramResult;
using support::runProgram;
using support::TempDir;

namespace {

class DaemonTest : public ::testing::Test {
protected:
    std::string path() const { return m_directory.file("socket"); }
    std::vector<std::string> command() const {
        return {OWBCIMOMD, "--socket", path(), "--state", statePath()};
    }
    std::string statePath() const { return m_directory.file("state"); }
    const TempDir& directory() const { return m_directory; }

private:
    TempDir m_directory;
};

bool exists(const std::string& path) {
    struct stat file;
    return ::lstat(path.c_str(), &file) == 0;
}

/** Creates a socket file and returns the bound descriptor. The file remains after close(). */
int bindSocket(const std::string& path, int type = SOCK_STREAM) {
    const int descriptor = ::socket(AF_UNIX, type | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(0, ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    return descriptor;
}

} // namespace

TEST_F(DaemonTest, ItLogsWhenItIsReady) {
    Daemon daemon(command());
    EXPECT_EQ("owbcimomd: ready on " + path(), daemon.nextErrorLine());
    EXPECT_EQ(1u, instancesIn(Client(path()).exchange(httpRequest(enumerateBody("QAV_System"))).body).size());
}

TEST_F(DaemonTest, EveryUserMayConnect) {
    Daemon daemon(command());
    daemon.nextErrorLine();
    struct stat file;
    ASSERT_EQ(0, ::lstat(path().c_str(), &file));
    EXPECT_EQ(static_cast<mode_t>(S_IFSOCK | 0666), file.st_mode);
}

TEST_F(DaemonTest, StopSignalsEndItAndRemoveTheSocket) {
    for (const int signal : {SIGTERM, SIGINT}) {
        Daemon daemon(command());
        daemon.nextErrorLine();
        ASSERT_TRUE(exists(path() + ".lock"));
        daemon.signal(signal);
        EXPECT_EQ("", daemon.nextErrorLine());
        EXPECT_EQ(0, daemon.wait());
        EXPECT_FALSE(exists(path()));
        EXPECT_FALSE(exists(path() + ".lock"));
    }
}

TEST_F(DaemonTest, StopSignalsEndItWhileClientsAreConnected) {
    Daemon daemon(command());
    daemon.nextErrorLine();
    Client idle(path());
    Client halfway(path());
    halfway.send("M-POST /cimom HT");
    EXPECT_EQ(200u, idle.exchange(httpRequest(enumerateBody("QAV_System"))).status);
    daemon.signal(SIGTERM);
    EXPECT_EQ(0, daemon.wait());
    EXPECT_TRUE(idle.isClosedByPeer());
}

TEST_F(DaemonTest, ItServesNoMoreConnectionsThanItHasDescriptorsFor) {
    Daemon daemon({"/bin/sh", "-c", "ulimit -n 34 && exec \"$0\" --socket \"$1\" --state \"$1.state\"",
                   OWBCIMOMD, path()});
    ASSERT_EQ("owbcimomd: ready on " + path(), daemon.nextErrorLine());
    const std::string request = httpRequest(enumerateBody("QAV_System"));
    Client first(path());
    Client second(path());
    EXPECT_EQ(200u, first.exchange(request).status);
    EXPECT_EQ(200u, second.exchange(request).status);
    EXPECT_EQ(503u, Client(path()).receive().status);
    EXPECT_EQ(200u, first.exchange(request).status);
}

TEST_F(DaemonTest, ASocketWithoutAListenerIsReplaced) {
    ::close(bindSocket(path()));
    ASSERT_TRUE(exists(path()));
    Daemon daemon(command());
    EXPECT_EQ("owbcimomd: ready on " + path(), daemon.nextErrorLine());
    EXPECT_EQ(200u, Client(path()).exchange(httpRequest(enumerateBody("QAV_System"))).status);
}

TEST_F(DaemonTest, TheSocketOfAKilledDaemonIsReplaced) {
    {
        Daemon killed(command());
        killed.nextErrorLine();
        killed.signal(SIGKILL);
        killed.wait();
    }
    ASSERT_TRUE(exists(path()));
    ASSERT_TRUE(exists(path() + ".lock"));
    Daemon daemon(command());
    EXPECT_EQ("owbcimomd: ready on " + path(), daemon.nextErrorLine());
}

TEST_F(DaemonTest, ASecondDaemonFailsWithoutHarmToTheFirst) {
    Daemon daemon(command());
    daemon.nextErrorLine();
    const ProgramResult second =
        runProgram({OWBCIMOMD, "--socket", path(), "--state", directory().file("state of the second")});
    EXPECT_EQ(1, second.exitCode);
    EXPECT_EQ("owbcimomd: " + path() + ": another process listens on it\n", second.err);
    EXPECT_EQ(200u, Client(path()).exchange(httpRequest(enumerateBody("QAV_System"))).status);
    EXPECT_TRUE(exists(path() + ".lock"));
}

TEST_F(DaemonTest, ASecondDaemonReportsThatTheSocketOfTheFirstIsMissing) {
    Daemon daemon(command());
    daemon.nextErrorLine();
    ASSERT_EQ(0, ::unlink(path().c_str()));
    const ProgramResult second =
        runProgram({OWBCIMOMD, "--socket", path(), "--state", directory().file("state of the second")});
    EXPECT_EQ(1, second.exitCode);
    EXPECT_EQ("owbcimomd: " + path() + ": no socket, but another process holds " + path() + ".lock\n",
              second.err);
}

TEST_F(DaemonTest, ASocketWithAListenerIsNotReplaced) {
    const int listener = bindSocket(path());
    ASSERT_EQ(0, ::listen(listener, 1));
    const ProgramResult result = runProgram(command());
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + path() + ": another process listens on it\n", result.err);
    EXPECT_TRUE(exists(path()));
    EXPECT_FALSE(exists(path() + ".lock"));
    ::close(listener);
}

TEST_F(DaemonTest, ASocketOfAnotherTypeIsNotReplaced) {
    const int other = bindSocket(path(), SOCK_DGRAM);
    const ProgramResult result = runProgram(command());
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + path() + ": Protocol wrong type for socket\n", result.err);
    EXPECT_TRUE(exists(path()));
    ::close(other);
}

TEST_F(DaemonTest, AFileThatIsNotASocketIsNotReplaced) {
    directory().write("socket", "precious");
    const ProgramResult result = runProgram(command());
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + path() + ": exists and is not a socket\n", result.err);
    EXPECT_EQ("precious", support::readFile(path()));
}

TEST_F(DaemonTest, ASymbolicLinkIsNotReplaced) {
    ASSERT_EQ(0, ::symlink("elsewhere", path().c_str()));
    EXPECT_EQ(1, runProgram(command()).exitCode);
    EXPECT_TRUE(exists(path()));
    EXPECT_FALSE(exists(directory().file("elsewhere")));
}

TEST_F(DaemonTest, ATooLongPathIsAnError) {
    const std::string longest = "/tmp/" + std::string(103, 'x');
    const ProgramResult result = runProgram({OWBCIMOMD, "--socket", longest, "--state", statePath()});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + longest + ": a socket's path has at most 107 bytes\n", result.err);
}

TEST_F(DaemonTest, AMissingDirectoryIsAnError) {
    const std::string lost = directory().file("nowhere/socket");
    const ProgramResult result = runProgram({OWBCIMOMD, "--socket", lost, "--state", statePath()});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + lost + ".lock: No such file or directory\n", result.err);
}

TEST_F(DaemonTest, HelpAndVersionGoToStandardOutput) {
    const ProgramResult help = runProgram({OWBCIMOMD, "--help"});
    EXPECT_EQ(0, help.exitCode);
    EXPECT_NE(std::string::npos, help.out.find("--socket"));
    EXPECT_NE(std::string::npos, help.out.find("--root"));
    EXPECT_EQ("", help.err);
    const ProgramResult version = runProgram({OWBCIMOMD, "--version"});
    EXPECT_EQ(0, version.exitCode);
    EXPECT_EQ("owbcimomd " OWBCIMOMD_VERSION "\n", version.out);
}

TEST_F(DaemonTest, AnInvalidCommandLineIsReportedOnStandardError) {
    const std::vector<std::vector<std::string>> wrong = {
        {OWBCIMOMD, "--nope"}, {OWBCIMOMD, "word"}, {OWBCIMOMD, "--socket"}, {OWBCIMOMD, "--root", path()}};
    for (const std::vector<std::string>& command : wrong) {
        const ProgramResult result = runProgram(command);
        EXPECT_EQ(2, result.exitCode) << command[1];
        EXPECT_EQ(0u, result.err.find("owbcimomd: command line: ")) << result.err;
        EXPECT_EQ("", result.out) << command[1];
    }
}

TEST_F(DaemonTest, AnEmptyFileNameIsAnErrorOfTheCommandLine) {
    for (const std::string option : {"--users", "--instances"}) {
        const ProgramResult result = runProgram(
            {OWBCIMOMD, "--socket", directory().file("nowhere/socket"), "--state", statePath(), option, ""});
        EXPECT_EQ(2, result.exitCode);
        EXPECT_EQ("owbcimomd: command line: " + option + ": empty name\n", result.err);
    }
}
