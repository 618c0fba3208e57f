#include "state/StateFile.hpp"

#include "Failure.hpp"
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

TEST(StateFile, AMissingFileHasNoContent) {
    const TempDir directory;
    const StateFile file(directory.file("state"));
    EXPECT_FALSE(file.read());
    EXPECT_FALSE(std::filesystem::exists(directory.file("state")));
}

TEST(StateFile, TheLastContentIsRead) {
    const TempDir directory;
    {
        const StateFile file(directory.file("state"));
        file.replace("first, and longer");
        file.replace("second");
        EXPECT_EQ("second", file.read());
    }
    EXPECT_EQ("second", StateFile(directory.file("state")).read());
}

TEST(StateFile, NoOtherFileRemains) {
    const TempDir directory;
    StateFile(directory.file("state")).replace("content");
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(directory.path()), {}));
}

TEST(StateFile, MissingDirectoriesAreCreated) {
    const TempDir directory;
    StateFile(directory.file("a/b/state")).replace("content");
    EXPECT_EQ("content", readFile(directory.file("a/b/state")));
}

TEST(StateFile, OnlyTheOwnerMayReadIt) {
    const TempDir directory;
    const mode_t before = ::umask(0);
    StateFile(directory.file("state")).replace("content");
    ::umask(before);
    struct stat file;
    ASSERT_EQ(0, ::stat(directory.file("state").c_str(), &file));
    EXPECT_EQ(static_cast<mode_t>(S_IFREG | 0600), file.st_mode);
}

TEST(StateFile, AnIncompleteNewFileIsIgnored) {
    const TempDir directory;
    directory.write("state", "old");
    directory.write("state.new", "half of something that was longer");
    const StateFile file(directory.file("state"));
    EXPECT_EQ("old", file.read());
    file.replace("new");
    EXPECT_EQ("new", readFile(directory.file("state")));
}

TEST(StateFile, AFileWithTheNameOfTheNewFileIsRemovedNotWrittenTo) {
    const TempDir directory;
    const StateFile file(directory.file("state"));
    directory.write("other", "precious");
    ASSERT_EQ(0, ::link(directory.file("other").c_str(), directory.file("state.new").c_str()));
    file.replace("one");
    EXPECT_EQ("precious", readFile(directory.file("other")));
    ASSERT_EQ(0, ::mkfifo(directory.file("state.new").c_str(), 0666));
    file.replace("two");
    EXPECT_EQ("two", file.read());
}

TEST(StateFile, TheFileThatASymbolicLinkLeadsToIsReplacedAndLocked) {
    const TempDir directory;
    const std::string real = directory.write("real", "old");
    ASSERT_EQ(0, ::symlink(real.c_str(), directory.file("link").c_str()));
    const StateFile file(directory.file("link"));
    file.replace("new");
    EXPECT_EQ("new", readFile(real));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("link")));
    EXPECT_EQ(real + ": another object manager uses this file", errorOf([&] { StateFile{real}; }));
}

TEST(StateFile, NothingIsWrittenWithoutTheLockFile) {
    const TempDir directory;
    const std::string path = directory.file("sub/state");
    const StateFile first(path);
    first.replace("old");
    std::filesystem::remove_all(directory.file("sub"));
    {
        const StateFile second(path);
        second.replace("of the second");
        EXPECT_EQ(path + ".lock: No such file or directory", errorOf([&] { first.replace("of the first"); }));
        EXPECT_EQ("of the second", readFile(path));
    }
}

TEST(StateFile, ADirectoryThatCannotBeOpenedIsAnErrorBeforeTheReplacement) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "root may open any directory";
    const TempDir directory;
    const StateFile file(directory.file("sub/state"));
    file.replace("old");
    ::chmod(directory.file("sub").c_str(), 0300);
    EXPECT_EQ(directory.file("sub") + ": Permission denied", errorOf([&] { file.replace("new"); }));
    EXPECT_EQ("old", file.read());
    ::chmod(directory.file("sub").c_str(), 0700);
}

TEST(StateFile, OneProcessAtATimeLocksIt) {
    const TempDir directory;
    const std::string path = directory.file("state");
    {
        const StateFile first(path);
        EXPECT_EQ(path + ": another object manager uses this file", errorOf([&] { StateFile{path}; }));
    }
    EXPECT_EQ("no error", errorOf([&] { StateFile{path}; }));
}

TEST(StateFile, AFailureKeepsTheOldContent) {
    const TempDir directory;
    const StateFile file(directory.file("state"));
    file.replace("old");
    directory.write("state.new/in the way", "");
    EXPECT_EQ(directory.file("state.new") + ": Is a directory", errorOf([&] { file.replace("new"); }));
    EXPECT_EQ("old", file.read());
}

TEST(StateFile, AFullDiskKeepsTheOldContent) {
    const TempDir directory;
    const StateFile file(directory.file("state"));
    file.replace("old");
    // A limit on the size of files acts like a full disk: write() writes only a part.
    support::inChild(directory.path(), [&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small = {16, 16};
        ::setrlimit(RLIMIT_FSIZE, &small);
        EXPECT_EQ(directory.file("state.new") + ": File too large",
                  errorOf([&] { file.replace(std::string(64, 'x')); }));
        EXPECT_FALSE(std::filesystem::exists(directory.file("state.new"))) << "it would keep the disk full";
    });
    EXPECT_EQ("old", file.read());
}

TEST(StateFile, ADirectoryThatCannotBeCreatedIsAnError) {
    const TempDir directory;
    directory.write("file", "");
    EXPECT_EQ(directory.file("file/sub") + ": Not a directory",
              errorOf([&] { StateFile(directory.file("file/sub/state")); }));
}

TEST(StateFile, AFileThatIsNotRegularIsAnError) {
    const TempDir directory;
    directory.write("state/in the way", "");
    ASSERT_EQ(0, ::mkfifo(directory.file("fifo").c_str(), 0666));
    for (const char* const name : {"state", "fifo"}) {
        const StateFile file(directory.file(name));
        EXPECT_EQ(directory.file(name) + ": not a regular file", errorOf([&] { file.read(); }));
    }
}
