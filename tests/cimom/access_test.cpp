#include "Access.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace cimom;

TEST(Access, RootAndTheOwnUserMayWrite) {
    EXPECT_EQ(Access::write, accessOf(0));
    EXPECT_EQ(Access::write, accessOf(::geteuid()));
}

TEST(Access, OthersMayRead) {
    EXPECT_EQ(Access::read, accessOf(::geteuid() + 1));
    EXPECT_EQ(Access::read, accessOf(::geteuid() + 1000));
    EXPECT_EQ(Access::read, accessOf(static_cast<uid_t>(-1)));
}

TEST(Access, APeerHasTheAccessOfItsUser) {
    int ends[2];
    ASSERT_EQ(0, ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends));
    EXPECT_EQ(Access::write, accessOfPeer(ends[0]));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(Access, APeerWhoseUserIsNotKnownMayRead) {
    EXPECT_EQ(Access::read, accessOfPeer(-1));
    const int tcp = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(Access::read, accessOfPeer(tcp));
    ::close(tcp);
}
