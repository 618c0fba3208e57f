#include "commands/Report.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

TEST(ExitStatus, IsDifferentForEachStatusOfTheLibrary) {
    EXPECT_EQ(exitStatus(OWB_DONE), 0);
    EXPECT_EQ(exitStatus(OWB_NO_INSTANCE), 12);
    EXPECT_EQ(exitStatus(OWB_BAD_ARGUMENT), 13);
    EXPECT_EQ(exitStatus(OWB_NO_CONNECTION), 14);
    EXPECT_EQ(exitStatus(OWB_EXCEPTION), 15);
}

} // namespace
} // namespace owbctl
