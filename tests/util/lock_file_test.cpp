#include "support/Program.hpp"
#include "support/TempDir.hpp"
#include "util/LockFile.hpp"

#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <system_error>
#include <unistd.h>

using namespace util;

namespace {

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

} // namespace

TEST(LockFile, OneHolderExcludesOthers) {
    support::TempDir directory;
    const LockFile first(directory.file("lock"));
    try {
        const LockFile second(directory.file("lock"));
        FAIL() << "locked twice";
    } catch (const std::system_error& e) {
        EXPECT_EQ(std::errc::operation_would_block, e.code());
    }
    EXPECT_TRUE(exists(directory.file("lock")));
}

TEST(LockFile, AFileWithATimeThatStatCannotRepresentIsAnError) {
    if (sizeof(std::time_t) > 4)
        GTEST_SKIP() << "a time_t of 64 bits holds the time";
    support::TempDir directory;
    const std::string path = directory.write("lock", "");
    ASSERT_EQ(0, support::runProgram({"/usr/bin/touch", "-d", "2040-01-01", path}).exitCode);
    try {
        const LockFile lock(path);
        FAIL() << "locked";
    } catch (const std::system_error& e) {
        EXPECT_EQ(std::errc::value_too_large, e.code());
        EXPECT_EQ(0u, std::string(e.what()).find(path));
    }
}

TEST(LockFile, TheDestructorRemovesTheFile) {
    support::TempDir directory;
    { const LockFile holder(directory.file("lock")); }
    EXPECT_FALSE(exists(directory.file("lock")));
}

TEST(LockFile, AnExistingFileThatIsNotLockedCanBeLocked) {
    support::TempDir directory;
    directory.write("lock", "");
    const LockFile holder(directory.file("lock"));
    EXPECT_THROW(LockFile(directory.file("lock")), std::system_error);
}

TEST(LockFile, AnErrorNamesTheFile) {
    support::TempDir directory;
    const std::string path = directory.file("nowhere/lock");
    try {
        const LockFile holder(path);
        FAIL() << "locked";
    } catch (const std::system_error& e) {
        EXPECT_EQ(path + ": No such file or directory", std::string(e.what()));
    }
}

TEST(LockFile, AFileThatReplacedTheLockedFileStays) {
    support::TempDir directory;
    const std::string path = directory.file("lock");
    auto first = std::make_unique<LockFile>(path);
    EXPECT_TRUE(first->isHeld());
    std::filesystem::remove(path);
    EXPECT_FALSE(first->isHeld());
    const LockFile second(path);
    first.reset();
    EXPECT_TRUE(second.isHeld());
}
