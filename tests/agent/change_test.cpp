#include "agent/Change.hpp"

#include <gtest/gtest.h>

using namespace agent;

namespace {

using Values = std::vector<std::string>;

Change requested(const std::string& value, const Values& before, const Values& after) {
    return {nullptr, value, before, after};
}

Change notNamed(const Values& before, const Values& after) {
    return {nullptr, std::nullopt, before, after};
}

} // namespace

TEST(Change, IsAcceptedIfThePropertyHoldsTheRequestedText) {
    EXPECT_FALSE(requested("new", {"old"}, {"new"}).isRejected());
    EXPECT_FALSE(requested("old", {"old"}, {"old"}).isRejected());
    EXPECT_FALSE(requested("", {"old"}, {""}).isRejected());
}

TEST(Change, IsRejectedIfThePropertyHoldsAnyOtherText) {
    EXPECT_TRUE(requested("new", {"old"}, {"old"}).isRejected());
    EXPECT_TRUE(requested("7", {"6"}, {"07"}).isRejected());
    EXPECT_TRUE(requested("new", {"old"}, {}).isRejected());
    EXPECT_TRUE(requested("", {"old"}, {}).isRejected()) << "no value is not the empty text";
}

TEST(Change, IsAcceptedByAnArrayThatHoldsNothingElse) {
    EXPECT_FALSE(requested("new", {"a", "b"}, {"new"}).isRejected());
    EXPECT_TRUE(requested("new", {"a", "b"}, {"new", "b"}).isRejected());
    EXPECT_TRUE(requested("new", {"a"}, {"new", "new"}).isRejected());
}

TEST(Change, IsNeverRejectedIfTheWriteDidNotNameTheProperty) {
    EXPECT_FALSE(notNamed({"old"}, {"new"}).isRejected());
}

TEST(Change, IsClearedIfAPropertyLosesItsValueWithoutBeingNamed) {
    EXPECT_TRUE(notNamed({"old"}, {}).isCleared());
    EXPECT_TRUE(notNamed({""}, {}).isCleared()) << "the empty text is a value";
}

TEST(Change, IsNotClearedOtherwise) {
    EXPECT_FALSE(requested("new", {"old"}, {}).isCleared());
    EXPECT_FALSE(notNamed({"old"}, {""}).isCleared());
    EXPECT_FALSE(notNamed({}, {}).isCleared());
}
