#include "state/StateFile.hpp"

#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using cimom::StateFile;
using support::readFile;
using support::TempDir;

namespace {

template <class Action>
std::string errorOf(Action action) {
    try {
        action();
        return "no error";
    } catch (const std::runtime_error& e) {
        return e.what();
    }
}

} // namespace

TEST(StateFile, AMissingFileHasNoContent) {
    const TempDir folder;
    const StateFile file(folder.file("state"));
    EXPECT_FALSE(file.read());
    EXPECT_FALSE(std::filesystem::exists(folder.file("state")));
}

TEST(StateFile, TheLastContentIsRead) {
    const TempDir folder;
    {
        const StateFile file(folder.file("state"));
        file.replace("first, and longer");
        file.replace("second");
        EXPECT_EQ("second", file.read());
    }
    EXPECT_EQ("second", StateFile(folder.file("state")).read());
}

TEST(StateFile, NoOtherFileRemains) {
    const TempDir folder;
    StateFile(folder.file("state")).replace("content");
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder.path()), {}));
}

TEST(StateFile, MissingDirectoriesAreCreated) {
    const TempDir folder;
    StateFile(folder.file("a/b/state")).replace("content");
    EXPECT_EQ("content", readFile(folder.file("a/b/state")));
}

TEST(StateFile, OnlyTheOwnerMayReadIt) {
    const TempDir folder;
    const mode_t before = ::umask(0);
    StateFile(folder.file("state")).replace("content");
    ::umask(before);
    struct stat file;
    ASSERT_EQ(0, ::stat(folder.file("state").c_str(), &file));
    EXPECT_EQ(static_cast<mode_t>(S_IFREG | 0600), file.st_mode);
}

TEST(StateFile, AnIncompleteNewFileIsIgnored) {
    const TempDir folder;
    folder.write("state", "old");
    folder.write("state.new", "half of something that was longer");
    const StateFile file(folder.file("state"));
    EXPECT_EQ("old", file.read());
    file.replace("new");
    EXPECT_EQ("new", readFile(folder.file("state")));
}

TEST(StateFile, AFileWithTheNameOfTheNewFileIsRemovedNotWrittenTo) {
    const TempDir folder;
    const StateFile file(folder.file("state"));
    folder.write("other", "precious");
    ASSERT_EQ(0, ::link(folder.file("other").c_str(), folder.file("state.new").c_str()));
    file.replace("one");
    EXPECT_EQ("precious", readFile(folder.file("other")));
    ASSERT_EQ(0, ::mkfifo(folder.file("state.new").c_str(), 0666));
    file.replace("two");
    EXPECT_EQ("two", file.read());
}

TEST(StateFile, TheFileThatASymbolicLinkLeadsToIsReplacedAndLocked) {
    const TempDir folder;
    const std::string real = folder.write("real", "old");
    ASSERT_EQ(0, ::symlink(real.c_str(), folder.file("link").c_str()));
    const StateFile file(folder.file("link"));
    file.replace("new");
    EXPECT_EQ("new", readFile(real));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
    EXPECT_EQ(real + ": another object manager uses this file", errorOf([&] { StateFile{real}; }));
}

TEST(StateFile, NothingIsWrittenWithoutTheLockFile) {
    const TempDir folder;
    const std::string path = folder.file("sub/state");
    const StateFile first(path);
    first.replace("old");
    std::filesystem::remove_all(folder.file("sub"));
    {
        const StateFile second(path);
        second.replace("of the second");
        EXPECT_EQ(path + ".lock: No such file or directory", errorOf([&] { first.replace("of the first"); }));
        EXPECT_EQ("of the second", readFile(path));
    }
}

TEST(StateFile, ADirectoryThatCannotBeOpenedIsAnErrorBeforeTheReplacement) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may open any folder";
    const TempDir folder;
    const StateFile file(folder.file("sub/state"));
    file.replace("old");
    ::chmod(folder.file("sub").c_str(), 0300);
    EXPECT_EQ(folder.file("sub") + ": Permission denied", errorOf([&] { file.replace("new"); }));
    EXPECT_EQ("old", file.read());
    ::chmod(folder.file("sub").c_str(), 0700);
}

TEST(StateFile, OneProcessAtATimeLocksIt) {
    const TempDir folder;
    const std::string path = folder.file("state");
    {
        const StateFile first(path);
        EXPECT_EQ(path + ": another object manager uses this file", errorOf([&] { StateFile{path}; }));
    }
    EXPECT_EQ("no error", errorOf([&] { StateFile{path}; }));
}

TEST(StateFile, AFailureKeepsTheOldContent) {
    const TempDir folder;
    const StateFile file(folder.file("state"));
    file.replace("old");
    folder.write("state.new/in the way", "");
    EXPECT_EQ(folder.file("state.new") + ": Is a directory", errorOf([&] { file.replace("new"); }));
    EXPECT_EQ("old", file.read());
}

TEST(StateFile, AFullDiskKeepsTheOldContent) {
    const TempDir folder;
    const StateFile file(folder.file("state"));
    file.replace("old");
    // A limit on the size of files stands for the disk: both make write() end early.
    support::inChild(folder.path(), [&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small = {16, 16};
        ::setrlimit(RLIMIT_FSIZE, &small);
        EXPECT_EQ(folder.file("state.new") + ": File too large",
                  errorOf([&] { file.replace(std::string(64, 'x')); }));
        EXPECT_FALSE(std::filesystem::exists(folder.file("state.new"))) << "it would keep the disk full";
    });
    EXPECT_EQ("old", file.read());
}

TEST(StateFile, ADirectoryThatCannotBeCreatedIsAnError) {
    const TempDir folder;
    folder.write("file", "");
    EXPECT_EQ(folder.file("file/sub") + ": Not a directory",
              errorOf([&] { StateFile(folder.file("file/sub/state")); }));
}

TEST(StateFile, AFileThatIsNotRegularIsAnError) {
    const TempDir folder;
    folder.write("state/in the way", "");
    ASSERT_EQ(0, ::mkfifo(folder.file("fifo").c_str(), 0666));
    for (const char* const name : {"state", "fifo"}) {
        const StateFile file(folder.file(name));
        EXPECT_EQ(folder.file(name) + ": not a regular file", errorOf([&] { file.read(); }));
    }
}
