#include "support/Program.hpp"
#include "support/TempDir.hpp"
#include "users/UsersFile.hpp"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

using cimom::Access;
using cimom::readUsers;
using support::ProgramResult;
using support::readFile;
using support::runProgram;
using support::TempDir;

namespace {

const std::string secretHash = "$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                               "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/";

class PasswdTest : public ::testing::Test {
protected:
    std::string path() const { return m_directory.file("users"); }
    void write(const std::string& content) const {
        m_directory.write("users", content);
        ASSERT_EQ(0, ::chmod(path().c_str(), 0600));
    }
    /** Runs the program with arguments and standard input. */
    ProgramResult run(const std::vector<std::string>& arguments, const std::string& input = "") const {
        std::vector<std::string> command = {"/bin/sh", "-c", "in=$1; shift; exec \"$0\" \"$@\" < \"$in\"",
                                            OWBCIMOM_PASSWD, m_directory.write("input", input)};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return runProgram(command);
    }
    std::string errorOf(const std::vector<std::string>& arguments, const std::string& input, int code) const {
        const ProgramResult result = run(arguments, input);
        EXPECT_EQ(code, result.exitCode);
        EXPECT_EQ("", result.out);
        return result.err;
    }

private:
    TempDir m_directory;
};

/** The program on a terminal that the test controls. */
class AtTerminal {
public:
    explicit AtTerminal(const std::string& path)
        : m_terminal(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        ::grantpt(m_terminal);
        ::unlockpt(m_terminal);
        m_process = ::fork();
        if (m_process == 0)
            run(path, ::ptsname(m_terminal));
    }
    ~AtTerminal() {
        wait();
        ::close(m_terminal);
    }
    AtTerminal(const AtTerminal&) = delete;
    AtTerminal& operator=(const AtTerminal&) = delete;

    /** Reads up to and including a text, or to the end. */
    void expect(const std::string& text) {
        char c = '\0';
        while (m_shown.find(text, m_expected) == std::string::npos && ::read(m_terminal, &c, 1) == 1)
            m_shown += c;
        EXPECT_NE(std::string::npos, m_shown.find(text, m_expected)) << m_shown;
        m_expected = m_shown.size();
    }
    void type(const std::string& text) const {
        EXPECT_EQ(static_cast<ssize_t>(text.size()), ::write(m_terminal, text.data(), text.size()));
    }
    /** The terminal output that has been read so far. */
    const std::string& shown() const { return m_shown; }
    bool echoes() const {
        termios settings{};
        EXPECT_EQ(0, ::tcgetattr(m_terminal, &settings));
        return (settings.c_lflag & ECHO) != 0;
    }
    /** The status of waitpid(2). */
    int wait() {
        if (m_process > 0) {
            EXPECT_EQ(m_process, ::waitpid(m_process, &m_status, 0));
            m_process = -1;
        }
        return m_status;
    }

private:
    [[noreturn]] static void run(const std::string& path, const char* terminal) {
        ::setsid();
        const int descriptor = ::open(terminal, O_RDWR);
        ::ioctl(descriptor, TIOCSCTTY, 0);
        for (int standard = 0; standard < 3; ++standard)
            ::dup2(descriptor, standard);
        ::execl(OWBCIMOM_PASSWD, OWBCIMOM_PASSWD, path.c_str(), "bob", nullptr);
        ::_exit(127);
    }

    const int m_terminal;
    pid_t m_process;
    int m_status = 0;
    std::string m_shown;
    std::size_t m_expected = 0;
};

} // namespace

TEST_F(PasswdTest, ItSetsThePasswordOfALineOfStandardInput) {
    EXPECT_EQ("", errorOf({path(), "bob"}, "pass word\nmore\n", 0));
    EXPECT_TRUE(readUsers(path()).matches("bob", "pass word"));
    EXPECT_EQ(0u, readFile(path()).find("bob:$y$"));
    struct stat status;
    ASSERT_EQ(0, ::stat(path().c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 07777);
}

TEST_F(PasswdTest, TheLastLineNeedsNoLineEnd) {
    EXPECT_EQ("", errorOf({path(), "bob", "--method", "sha512"}, "d\xc3\xbcne", 0));
    EXPECT_TRUE(readUsers(path()).matches("bob", "d\xc3\xbcne"));
    EXPECT_EQ(0u, readFile(path()).find("bob:$6$"));
}

TEST_F(PasswdTest, OtherUsersAndCommentsStay) {
    write("# who\nann:" + secretHash + "\nbob:" + secretHash + "\n");
    EXPECT_EQ("", errorOf({path(), "bob"}, "new", 0));
    EXPECT_TRUE(readUsers(path()).matches("bob", "new"));
    EXPECT_EQ(0u, readFile(path()).find("# who\nann:" + secretHash + "\nbob:$y$"));
}

TEST_F(PasswdTest, AReadOnlyUserStaysOneUntilItIsDeleted) {
    EXPECT_EQ("", errorOf({path(), "bob", "--read-only"}, "secret", 0));
    EXPECT_EQ(Access::read, readUsers(path()).access("bob"));
    EXPECT_EQ("", errorOf({path(), "bob"}, "other", 0));
    EXPECT_EQ(Access::read, readUsers(path()).access("bob")) << "a new password gives no new rights";
    EXPECT_EQ("", errorOf({path(), "bob", "--delete"}, "", 0));
    EXPECT_EQ("", errorOf({path(), "bob"}, "other", 0));
    EXPECT_EQ(Access::write, readUsers(path()).access("bob"));
    EXPECT_EQ("", errorOf({path(), "bob", "--read-only"}, "other", 0));
    EXPECT_EQ(Access::read, readUsers(path()).access("bob"));
}

TEST_F(PasswdTest, ItDeletesAUser) {
    write("# who\nann:" + secretHash + "\nbob:" + secretHash + "\n");
    EXPECT_EQ("", errorOf({"--delete", path(), "bob"}, "", 0));
    EXPECT_EQ("# who\nann:" + secretHash + "\n", readFile(path()));
    EXPECT_EQ("owbcimom-passwd: " + path() + ": no such user: \"bob\"\n",
              errorOf({path(), "--delete", "bob"}, "", 1));
}

TEST_F(PasswdTest, APasswordThatNoClientCanSendIsAnError) {
    write("# who\n");
    EXPECT_EQ("owbcimom-passwd: password: empty\n", errorOf({path(), "bob"}, "\n", 1));
    EXPECT_EQ("owbcimom-passwd: password: no input\n", errorOf({path(), "bob"}, "", 1));
    EXPECT_EQ("owbcimom-passwd: password: contains a control character\n",
              errorOf({path(), "bob"}, "a\tb\n", 1));
    EXPECT_EQ("owbcimom-passwd: password: contains a control character\n",
              errorOf({path(), "bob"}, std::string("a\0b\n", 4), 1));
    EXPECT_EQ("owbcimom-passwd: password: longer than 511 bytes\n",
              errorOf({path(), "bob"}, std::string(512, 'x') + "\n", 1));
    EXPECT_EQ("# who\n", readFile(path()));
    EXPECT_EQ("", errorOf({path(), "bob"}, std::string(511, 'x') + "\n", 0));
}

TEST_F(PasswdTest, AnInvalidNameIsReportedBeforeThePasswordIsRead) {
    EXPECT_EQ("owbcimom-passwd: user name: contains a colon\n", errorOf({path(), "b:ob"}, "", 1));
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(PasswdTest, AnInvalidFileIsReportedWithItsLine) {
    write("nonsense\n");
    EXPECT_EQ("owbcimom-passwd: " + path() + ":1: no colon after the user name\n",
              errorOf({path(), "bob"}, "new", 1));
    EXPECT_EQ("owbcimom-passwd: " + path() + "/x.lock: Not a directory\n",
              errorOf({path() + "/x", "bob"}, "new", 1));
}

TEST_F(PasswdTest, AnInvalidCommandLineIsReported) {
    EXPECT_EQ("owbcimom-passwd: command line: USER is required\n", errorOf({path()}, "", 2));
    EXPECT_EQ("owbcimom-passwd: command line: --method: md5 not in {yescrypt,sha512}\n",
              errorOf({path(), "bob", "--method", "md5"}, "", 2));
    EXPECT_EQ("owbcimom-passwd: command line: --delete excludes --method\n",
              errorOf({path(), "bob", "--method", "sha512", "--delete"}, "", 2));
}

TEST_F(PasswdTest, ItPrintsItsVersion) {
    EXPECT_EQ(0u, run({"--version"}).out.find("owbcimom-passwd 1."));
    EXPECT_EQ(0, run({"--help"}).exitCode);
}

TEST_F(PasswdTest, AtATerminalItAsksTwiceWithoutEcho) {
    AtTerminal terminal(path());
    terminal.expect("New password: ");
    EXPECT_FALSE(terminal.echoes());
    terminal.type("secret\n");
    terminal.expect("Retype new password: ");
    terminal.type("secret\n");
    terminal.expect("\n");
    EXPECT_EQ(0, terminal.wait());
    EXPECT_EQ("New password: \r\nRetype new password: \r\n", terminal.shown());
    EXPECT_TRUE(terminal.echoes());
    EXPECT_TRUE(readUsers(path()).matches("bob", "secret"));
}

TEST_F(PasswdTest, TwoPasswordsThatDoNotMatchAreAnError) {
    AtTerminal terminal(path());
    terminal.expect("New password: ");
    terminal.type("secret\n");
    terminal.expect("Retype new password: ");
    terminal.type("Secret\n");
    terminal.expect("owbcimom-passwd: passwords do not match\r\n");
    EXPECT_EQ(1, WEXITSTATUS(terminal.wait()));
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(PasswdTest, AnInterruptRestoresTheTerminal) {
    AtTerminal terminal(path());
    terminal.expect("New password: ");
    terminal.type("sec\x03");
    const int status = terminal.wait();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_TRUE(terminal.echoes());
    EXPECT_FALSE(std::filesystem::exists(path()));
}
