// The descriptors of the caller and of the command. The program interposes posix_spawn().
#include "Run.hpp"

#include "support/Child.hpp"
#include "support/Descriptors.hpp"
#include "support/TempDir.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <map>
#include <spawn.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// The descriptors of this process at the last start of a command.
std::map<int, int> flagsAtSpawn;

} // namespace

extern "C" __attribute__((visibility("default"))) int
posix_spawn(pid_t* pid, const char* path, const posix_spawn_file_actions_t* actions,
            const posix_spawnattr_t* attributes, char* const arguments[], char* const environment[]) {
    flagsAtSpawn.clear();
    for (const int number : support::openDescriptors())
        flagsAtSpawn[number] = ::fcntl(number, F_GETFD);
    static const auto next = reinterpret_cast<decltype(&posix_spawn)>(::dlsym(RTLD_NEXT, "posix_spawn"));
    return next(pid, path, actions, attributes, arguments, environment);
}

namespace {

using support::inChild;
using support::TempDir;

TEST(Descriptors, TheCommandHasOnlyTheStandardOnes) {
    const TempDir directory;
    inChild(directory.path(), [] {
        for (const int number : {3, 4, 5, 11, 200})
            EXPECT_EQ(number, ::dup2(2, number));
        EXPECT_EQ((Lines{"0", "1", "2"}), run("ls /proc/$$/fd; :", {"input"}).out);
    });
}

void expectSevenCloseOnExec() {
    const std::set<int> before = support::openDescriptors();
    run("true", {"input"});
    int ours = 0;
    for (const auto& [number, flags] : flagsAtSpawn) {
        if (before.count(number) != 0)
            continue;
        ++ours;
        EXPECT_EQ(FD_CLOEXEC, flags) << number;
    }
    EXPECT_EQ(7, ours); // the input, and pipes for the status and both outputs
}

TEST(Descriptors, OfTheLibraryAreCloseOnExec) {
    const TempDir directory;
    inChild(directory.path(), [] {
        expectSevenCloseOnExec();
        ::dup2(2, 3);
        ::dup2(2, 4);
        expectSevenCloseOnExec(); // the numbers of the command's descriptors are in use
    });
}

TEST(Descriptors, AreAllClosed) {
    const std::set<int> before = support::openDescriptors();
    run("echo one; echo two >&2", {"input"});
    run("no-tool-of-this-name");
    run(std::string(300000, 'x'), {"input"});
    EXPECT_EQ(-1, runcommand(nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(before, support::openDescriptors());
}

TEST(Descriptors, TheStandardOnesOfTheCallerMayBeClosed) {
    for (int closed = 1; closed < 8; ++closed) {
        const TempDir directory;
        inChild(directory.path(), [closed] {
            for (int number = 0; number < 5; ++number) // including those of the outer shell
                if (number > 2 || (closed & (1 << number)) != 0)
                    ::close(number);
            const std::set<int> before = support::openDescriptors();
            const Outcome result = run("cat; echo two >&2; ls /proc/$$/fd; exit 3", {"one"});
            EXPECT_EQ(3, result.status);
            EXPECT_EQ((Lines{"one", "0", "1", "2"}), result.out);
            EXPECT_EQ(Lines{"two"}, result.err);
            char** lines = nullptr;
            EXPECT_EQ(4, runcommand("cat; echo three >&2; exit 4", nullptr, nullptr, &lines));
            EXPECT_EQ(Lines{"three"}, takeLines(lines));
            EXPECT_EQ(5, runcommand("cat; echo four; exit 5", nullptr, &lines, nullptr));
            EXPECT_EQ(Lines{"four"}, takeLines(lines));
            EXPECT_EQ(before, support::openDescriptors());
        });
    }
}

TEST(Descriptors, RunningOutIsAnErrorWithoutALeak) {
    const TempDir directory;
    inChild(directory.path(), [] {
        const std::set<int> before = support::openDescriptors();
        int failures = 0;
        for (rlim_t limit = 3;; ++limit) {
            const rlimit descriptors = {limit, 1024};
            ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &descriptors));
            char* something[] = {nullptr};
            char** out = something;
            char** err = something;
            char* input[] = {nullptr};
            const int status = runcommand("exit 3", input, &out, &err);
            EXPECT_EQ(before, support::openDescriptors()) << limit;
            EXPECT_EQ(status == 3, out && err) << limit;
            freeresultbuf(out);
            freeresultbuf(err);
            if (status == 3)
                break;
            ASSERT_EQ(-1, status) << limit;
            ++failures;
        }
        EXPECT_LE(7, failures); // one failure per needed descriptor
    });
}

} // namespace
