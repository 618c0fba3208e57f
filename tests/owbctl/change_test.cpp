#include "agent/Change.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

using Values = std::vector<std::string>;

Change asked(const std::string& value, const Values& before, const Values& after) {
    return {nullptr, value, before, after};
}

Change notAsked(const Values& before, const Values& after) {
    return {nullptr, std::nullopt, before, after};
}

TEST(Change, AValueThatIsThereAsAskedWasTaken) {
    EXPECT_FALSE(asked("new", {"old"}, {"new"}).isRefused());
    EXPECT_FALSE(asked("old", {"old"}, {"old"}).isRefused());
    EXPECT_FALSE(asked("", {"old"}, {""}).isRefused());
}

TEST(Change, AnyOtherTextThanTheOneAskedForIsARefusal) {
    EXPECT_TRUE(asked("new", {"old"}, {"old"}).isRefused());
    EXPECT_TRUE(asked("7", {"6"}, {"07"}).isRefused());
    EXPECT_TRUE(asked("new", {"old"}, {}).isRefused());
    EXPECT_TRUE(asked("", {"old"}, {}).isRefused()) << "no value is not the empty text";
}

TEST(Change, AnArrayHasTakenAValueWhenItHoldsNothingElse) {
    EXPECT_FALSE(asked("new", {"a", "b"}, {"new"}).isRefused());
    EXPECT_TRUE(asked("new", {"a", "b"}, {"new", "b"}).isRefused());
    EXPECT_TRUE(asked("new", {"a"}, {"new", "new"}).isRefused());
}

TEST(Change, WhatWasNotAskedForIsNeverRefused) {
    EXPECT_FALSE(notAsked({"old"}, {"new"}).isRefused());
}

TEST(Change, AValueThatIsLostWithoutBeingNamedIsCleared) {
    EXPECT_TRUE(notAsked({"old"}, {}).isCleared());
    EXPECT_TRUE(notAsked({""}, {}).isCleared()) << "the empty text is a value";
}

TEST(Change, NothingElseIsCleared) {
    EXPECT_FALSE(asked("new", {"old"}, {}).isCleared());
    EXPECT_FALSE(notAsked({"old"}, {""}).isCleared());
    EXPECT_FALSE(notAsked({}, {}).isCleared());
}

} // namespace
} // namespace owbctl
