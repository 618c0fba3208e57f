#include "objects/Access.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace cimom;

TEST(Access, RootAndTheUserOfTheProcessMayWrite) {
    EXPECT_EQ(Access::write, accessOf(0));
    EXPECT_EQ(Access::write, accessOf(::geteuid()));
}

TEST(Access, OthersMayRead) {
    EXPECT_EQ(Access::read, accessOf(::geteuid() + 1));
    EXPECT_EQ(Access::read, accessOf(::geteuid() + 1000));
    EXPECT_EQ(Access::read, accessOf(static_cast<uid_t>(-1)));
}
