#include "http/ListeningSocket.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"
#include "system/LockFile.hpp"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

using namespace cimom;

namespace {

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

} // namespace

TEST(LockFile, OneHolderKeepsOthersOut) {
    support::TempDir folder;
    const LockFile first(folder.file("lock"));
    try {
        const LockFile second(folder.file("lock"));
        FAIL() << "locked twice";
    } catch (const std::system_error& e) {
        EXPECT_EQ(std::errc::operation_would_block, e.code());
    }
    EXPECT_TRUE(exists(folder.file("lock")));
}

TEST(LockFile, AFileWhoseTimeIsNotKnownIsReported) {
    support::TempDir folder;
    const std::string path = folder.write("lock", "");
    ASSERT_EQ(0, support::runProgram({"/usr/bin/touch", "-d", "2040-01-01", path}).exitCode);
    try {
        const LockFile lock(path);
        FAIL() << "locked";
    } catch (const std::system_error& e) {
        EXPECT_EQ(std::errc::value_too_large, e.code());
        EXPECT_EQ(0u, std::string(e.what()).find(path));
    }
}

TEST(LockFile, TheFileGoesWithItsHolder) {
    support::TempDir folder;
    { const LockFile holder(folder.file("lock")); }
    EXPECT_FALSE(exists(folder.file("lock")));
}

TEST(LockFile, AFileThatWasLeftBehindIsTakenOver) {
    support::TempDir folder;
    folder.write("lock", "");
    const LockFile holder(folder.file("lock"));
    EXPECT_THROW(LockFile(folder.file("lock")), std::system_error);
}

TEST(LockFile, AFileThatCannotBeMadeIsNamed) {
    support::TempDir folder;
    const std::string path = folder.file("nowhere/lock");
    try {
        const LockFile holder(path);
        FAIL() << "locked";
    } catch (const std::system_error& e) {
        EXPECT_EQ(path + ": No such file or directory", std::string(e.what()));
    }
}

TEST(LockFile, AFileThatTookItsPlaceStays) {
    support::TempDir folder;
    const std::string path = folder.file("lock");
    auto first = std::make_unique<LockFile>(path);
    EXPECT_TRUE(first->isHeld());
    std::filesystem::remove(path);
    EXPECT_FALSE(first->isHeld());
    const LockFile second(path);
    first.reset();
    EXPECT_TRUE(second.isHeld());
}

TEST(ListeningSocket, ItsModeDoesNotDependOnTheUmask) {
    support::TempDir folder;
    const mode_t before = ::umask(0077);
    const ListeningSocket socket(folder.file("socket"), 0662);
    ::umask(before);
    struct stat file;
    ASSERT_EQ(0, ::stat(folder.file("socket").c_str(), &file));
    EXPECT_EQ(static_cast<mode_t>(S_IFSOCK | 0662), file.st_mode);
}

TEST(ListeningSocket, HasAPath) {
    try {
        const ListeningSocket socket("", 0600);
        FAIL() << "listens";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ("socket: the path is empty", e.what());
    }
}

TEST(ListeningSocket, AFileThatReplacedTheSocketStays) {
    support::TempDir folder;
    {
        const ListeningSocket socket(folder.file("socket"), 0600);
        ASSERT_EQ(0, ::unlink(folder.file("socket").c_str()));
        folder.write("socket", "another's");
    }
    EXPECT_EQ("another's", support::readFile(folder.file("socket")));
    EXPECT_FALSE(exists(folder.file("socket.lock")));
}

TEST(ListeningSocket, ItsDescriptorsAreClosedOnExec) {
    support::TempDir folder;
    const ListeningSocket socket(folder.file("socket"), 0600);
    const int copy = socket.duplicate();
    EXPECT_EQ(FD_CLOEXEC, ::fcntl(copy, F_GETFD));
    ::close(copy);
}
