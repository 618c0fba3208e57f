#include "owb.h"

#include <gtest/gtest.h>
#include <string>

namespace {

std::string cleanedInPlace(const std::string& text) {
    std::string buffer = text;
    EXPECT_EQ(buffer.data(), owbStringClean(buffer.data(), nullptr));
    // cppcheck-suppress stlcstrReturn ; ends where the C text does
    return buffer.c_str();
}

TEST(StringClean, ANullSourceEmptiesTheDestination) {
    char dst[] = "old";
    EXPECT_EQ(dst, owbStringClean(nullptr, dst));
    EXPECT_STREQ("", dst);
}

TEST(StringClean, ANullSourceWithoutDestinationGivesNull) {
    EXPECT_EQ(nullptr, owbStringClean(nullptr, nullptr));
}

TEST(StringClean, AnEmptySourceEmptiesTheDestination) {
    char src[] = "";
    char dst[] = "old";
    EXPECT_EQ(dst, owbStringClean(src, dst));
    EXPECT_STREQ("", dst);
}

TEST(StringClean, AnEmptySourceInPlaceGivesNull) {
    char src[] = "";
    EXPECT_EQ(nullptr, owbStringClean(src, nullptr));
}

TEST(StringClean, WhiteSpaceBecomesTheEmptyText) {
    EXPECT_EQ("", cleanedInPlace(" \t\n\r\f"));
}

TEST(StringClean, OnlyOuterWhiteSpaceIsStripped) {
    EXPECT_EQ("one \ttwo", cleanedInPlace(" \t\r\none \ttwo\f\r\n"));
}

TEST(StringClean, AVerticalTabIsNotStripped) {
    EXPECT_EQ("\vx\v", cleanedInPlace("\vx\v"));
    EXPECT_EQ("\v", cleanedInPlace(" \v "));
}

TEST(StringClean, DoubleQuotesBecomeSingleOnes) {
    EXPECT_EQ("'a'b''", cleanedInPlace("\"a\"b\"\""));
}

TEST(StringClean, OtherCharactersStay) {
    EXPECT_EQ("\\'\x80 \x01", cleanedInPlace("\\'\x80 \x01"));
}

TEST(StringClean, TheSourceStaysIfThereIsADestination) {
    char src[] = "  \"x\" ";
    char dst[sizeof src];
    EXPECT_EQ(dst, owbStringClean(src, dst));
    EXPECT_STREQ("'x'", dst);
    EXPECT_STREQ("  \"x\" ", src);
}

TEST(StringClean, TheWholeSourceIsCopiedBeforeItIsCleaned) {
    char src[] = " ab ";
    char dst[] = "12345678";
    owbStringClean(src, dst);
    EXPECT_EQ(std::string("ab\0\0\0"
                          "678",
                          8),
              std::string(dst, 8))
        << "and trailing white space overwritten";
}

TEST(StringClean, ATextOfOneCharacterStays) {
    EXPECT_EQ("x", cleanedInPlace("x"));
}

TEST(StringClean, ALongTextIsCleanedCompletely) {
    const std::string inner(100000, 'y');
    EXPECT_EQ(inner, cleanedInPlace(" " + inner + "\n"));
}

} // namespace
