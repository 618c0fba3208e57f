// The socket check of `owbctl doctor`.
#include "doctor/SocketCheck.hpp"
#include "support/TempDir.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace owbctl_test {
namespace {

using owbctl::Check;
using owbctl::checkSocket;

const uid_t nobody = 65534;

/** Makes root another user in a scope. */
class OtherUser {
public:
    OtherUser() { EXPECT_EQ(0, ::seteuid(nobody)); }
    ~OtherUser() { EXPECT_EQ(0, ::seteuid(0)); }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;
};

/** A listening socket that accepts no connection and has a short backlog. */
class Listener {
public:
    explicit Listener(const std::string& path) {
        m_address.sun_family = AF_UNIX;
        path.copy(m_address.sun_path, sizeof m_address.sun_path - 1);
        m_descriptors.push_back(newSocket());
        EXPECT_EQ(0, ::bind(m_descriptors[0], address(), sizeof m_address));
        EXPECT_EQ(0, ::listen(m_descriptors[0], 4));
    }
    ~Listener() {
        for (const int descriptor : m_descriptors)
            ::close(descriptor);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /** Fills the backlog. */
    void fill() {
        do
            m_descriptors.push_back(newSocket());
        while (::connect(m_descriptors.back(), address(), sizeof m_address) == 0);
        EXPECT_EQ(EAGAIN, errno);
    }

private:
    static int newSocket() { return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }
    const sockaddr* address() const { return reinterpret_cast<const sockaddr*>(&m_address); }

    sockaddr_un m_address{};
    std::vector<int> m_descriptors;
};

class SocketCheck : public testing::Test {
protected:
    /** Sets the mode of the directory of the socket. */
    void setDirectoryMode(mode_t mode) const { EXPECT_EQ(0, ::chmod(m_directory.path().c_str(), mode)); }

    const support::TempDir m_directory;
    const std::string m_path = m_directory.file("socket");
};

class SocketOfAnotherUser : public SocketCheck {
protected:
    void SetUp() override {
        if (::geteuid() != 0)
            GTEST_SKIP() << "needs root, to be another user";
    }
};

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(SocketCheck, ASocketOfThisUserPassesTheCheckInAnyDirectory) {
    const Listener listener(m_path);
    setDirectoryMode(0777);
    EXPECT_EQ(Check::Result::ok, checkSocket(m_path).result);
}

TEST_F(SocketCheck, AFullListenBacklogIsReported) {
    Listener listener(m_path);
    listener.fill();
    const Check check = checkSocket(m_path);
    EXPECT_EQ(Check::Result::fail, check.result);
    EXPECT_TRUE(holds(check.finding, ": listen backlog full")) << check.finding;
    EXPECT_TRUE(holds(check.advice, "busy or stuck")) << check.advice;
}

TEST_F(SocketOfAnotherUser, WithoutAccessIsReported) {
    const Listener listener(m_path);
    setDirectoryMode(0755);
    ASSERT_EQ(0, ::chmod(m_path.c_str(), 0600));
    const OtherUser user;
    const Check check = checkSocket(m_path);
    EXPECT_EQ(Check::Result::fail, check.result);
    EXPECT_TRUE(holds(check.finding, ", of root: Permission denied")) << check.finding;
    EXPECT_TRUE(holds(check.advice, "a user with access to the socket")) << check.advice;
}

TEST_F(SocketOfAnotherUser, InAnInaccessibleDirectoryIsReported) {
    const Listener listener(m_path);
    setDirectoryMode(0700);
    const OtherUser user;
    const Check check = checkSocket(m_path);
    EXPECT_EQ(Check::Result::fail, check.result);
    EXPECT_EQ(m_path + ": Permission denied", check.finding);
    EXPECT_EQ("Run as a user with access to the directory", check.advice);
}

TEST_F(SocketOfAnotherUser, InADirectoryThatAllUsersMayWriteIsAWarning) {
    setDirectoryMode(0777);
    ASSERT_EQ(0, ::seteuid(nobody));
    const Listener listener(m_path);
    ASSERT_EQ(0, ::seteuid(0));
    const Check check = checkSocket(m_path);
    EXPECT_EQ(Check::Result::warn, check.result);
    EXPECT_TRUE(holds(check.finding, " of nobody")) << check.finding;
    EXPECT_TRUE(holds(check.advice, "Every user may create a socket in this directory")) << check.advice;
    setDirectoryMode(0755);
    EXPECT_EQ(Check::Result::ok, checkSocket(m_path).result) << "only root may create a socket there";
}

} // namespace
} // namespace owbctl_test
