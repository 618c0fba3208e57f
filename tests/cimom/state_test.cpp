// The state file of a running object manager.
#include "Client.hpp"
#include "support/Manager.hpp"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using support::Daemon;
using support::Manager;
using support::ProgramResult;
using support::readFile;
using support::runProgram;
using support::TempDir;

namespace {

/** A command with one argument replaced. */
std::vector<std::string> with(std::vector<std::string> command, const std::string& argument,
                              const std::string& replacement) {
    std::replace(command.begin(), command.end(), argument, replacement);
    return command;
}

/** A command that runs in the given environment. */
std::vector<std::string> inEnvironment(const std::vector<std::string>& variables,
                                       const std::vector<std::string>& command) {
    std::vector<std::string> all = {"/usr/bin/env", "-i"};
    all.insert(all.end(), variables.begin(), variables.end());
    all.insert(all.end(), command.begin(), command.end());
    return all;
}

/** The default state file that the help names in an environment. */
std::string defaultIn(const std::vector<std::string>& variables) {
    const std::string help = runProgram(inEnvironment(variables, {OWBCIMOMD, "--help"})).out;
    const std::size_t begin = help.find('=', help.find("--state ")) + 1;
    return help.substr(begin, help.find_first_of(" \n", begin) - begin);
}

} // namespace

TEST(State, AnInvalidFileIsReportedWithItsLineAndNotChanged) {
    const TempDir directory;
    const std::string file = directory.write("state", "{\n\"format_version\": 1,\n\"instances\": 5}\n");
    const ProgramResult result =
        runProgram({OWBCIMOMD, "--socket", directory.file("socket"), "--state", file});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + file + ":3: not an object of instances\n", result.err);
    EXPECT_EQ("{\n\"format_version\": 1,\n\"instances\": 5}\n", readFile(file));
    EXPECT_FALSE(std::filesystem::exists(directory.file("socket")));
}

TEST(State, AFileOfAnotherObjectManagerIsAnError) {
    Manager manager;
    const ProgramResult result =
        runProgram(with(manager.command(), manager.socketPath(), manager.directory().file("other")));
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("owbcimomd: " + manager.statePath() + ": another object manager uses this file\n", result.err);
}

TEST(State, WithoutWritesNoFileRemains) {
    Manager manager;
    EXPECT_EQ(0, manager.end(SIGTERM));
    EXPECT_TRUE(std::filesystem::is_empty(manager.directory().path()));
}

TEST(State, TheDefaultIsInTheStateDirectoryOfTheUser) {
    if (::geteuid() == 0) {
        EXPECT_EQ("/var/lib/owb/state.json", defaultIn({"HOME=/home/me", "XDG_STATE_HOME=/x"}));
        return;
    }
    EXPECT_EQ("/home/me/.local/state/owb/state.json", defaultIn({"HOME=/home/me"}));
    EXPECT_EQ("/x/owb/state.json", defaultIn({"HOME=/home/me", "XDG_STATE_HOME=/x"}));
    EXPECT_EQ("/home/me/.local/state/owb/state.json", defaultIn({"HOME=/home/me", "XDG_STATE_HOME=x"}));
}

TEST(SocketMode, IsThatOfTheCommandLineDespiteTheUmask) {
    for (const auto& [text, mode] : {std::pair{"0600", 0600u}, std::pair{"660", 0660u}}) {
        const mode_t before = ::umask(0077);
        const Manager manager({"--socket-mode", text});
        ::umask(before);
        struct stat file;
        ASSERT_EQ(0, ::lstat(manager.socketPath().c_str(), &file));
        EXPECT_EQ(S_IFSOCK | mode, file.st_mode) << text;
    }
}

TEST(SocketMode, OtherTextsAreUsageErrors) {
    for (const char* const text : {"", "rw", "0888", "01777", "-1", "0x1ff"}) {
        const ProgramResult result = runProgram({OWBCIMOMD, "--socket-mode", text});
        EXPECT_EQ(2, result.exitCode) << text;
        EXPECT_EQ("owbcimomd: command line: --socket-mode: '" + std::string(text) +
                      "' is not a file mode (octal, 0 to 0777)\n",
                  result.err);
    }
}

TEST(StateOfNone, AUserWithoutAWritableDirectoryServesReaders) {
    const TempDir directory;
    Daemon daemon(inEnvironment({}, {OWBCIMOMD, "--socket", directory.file("socket"), "--no-state"}));
    EXPECT_EQ("owbcimomd: ready on " + directory.file("socket"), daemon.nextErrorLine());
    EXPECT_EQ(200u,
              Client(directory.file("socket")).exchange(httpRequest(enumerateBody("QAV_System"))).status);
    std::size_t files = 0;
    for (const auto& each : std::filesystem::directory_iterator(directory.path()))
        files += each.path().filename().string().find("socket") == 0 ? 0 : 1;
    EXPECT_EQ(0u, files);
}

TEST(StateOfNone, AStateFileContradictsIt) {
    const ProgramResult result = runProgram({OWBCIMOMD, "--no-state", "--state", "any"});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_EQ("owbcimomd: command line: --state excludes --no-state\n", result.err);
}
