#include "http/UnixSocket.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace http;

namespace {

bool exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

} // namespace

TEST(UnixSocket, ItsModeDoesNotDependOnTheUmask) {
    support::TempDir directory;
    const mode_t before = ::umask(0077);
    const UnixSocket socket(directory.file("socket"), 0662);
    ::umask(before);
    struct stat file;
    ASSERT_EQ(0, ::stat(directory.file("socket").c_str(), &file));
    EXPECT_EQ(static_cast<mode_t>(S_IFSOCK | 0662), file.st_mode);
}

TEST(UnixSocket, AnEmptyPathIsAnError) {
    try {
        const UnixSocket socket("", 0600);
        FAIL() << "listens";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ("socket: the path is empty", e.what());
    }
}

TEST(UnixSocket, AFileThatReplacedTheSocketStays) {
    support::TempDir directory;
    {
        const UnixSocket socket(directory.file("socket"), 0600);
        ASSERT_EQ(0, ::unlink(directory.file("socket").c_str()));
        directory.write("socket", "another's");
    }
    EXPECT_EQ("another's", support::readFile(directory.file("socket")));
    EXPECT_FALSE(exists(directory.file("socket.lock")));
}

TEST(UnixSocket, ItsDescriptorsAreClosedOnExec) {
    support::TempDir directory;
    const UnixSocket socket(directory.file("socket"), 0600);
    const int copy = socket.duplicate();
    EXPECT_EQ(FD_CLOEXEC, ::fcntl(copy, F_GETFD));
    ::close(copy);
}
