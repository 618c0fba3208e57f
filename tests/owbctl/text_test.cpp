#include "output/Text.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

TEST(Printable, WellFormedTextIsNotChanged) {
    const std::string text = "a\\b \xc3\xa4 \xe2\x82\xac \xf0\x9f\x90\xa7 \xf4\x8f\xbf\xbf";
    EXPECT_EQ(printable(text), text);
}

TEST(Printable, BytesThatAreNotUtf8AreEscaped) {
    EXPECT_EQ(printable("\xff"), "\\xff");
    EXPECT_EQ(printable("\x80z"), "\\x80z") << "continuation without a lead";
    EXPECT_EQ(printable("\xe2\x82"), "\\xe2\\x82") << "cut off";
    EXPECT_EQ(printable("\xc3z"), "\\xc3z") << "lead without a continuation";
    EXPECT_EQ(printable("\xc0\xaf"), "\\xc0\\xaf") << "longer than needed";
    EXPECT_EQ(printable("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "surrogate";
    EXPECT_EQ(printable("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80") << "beyond U+10FFFF";
}

TEST(Printable, ControlCharactersOfBothSetsAreEscaped) {
    using namespace std::string_literals;
    EXPECT_EQ(printable("\0\n\t\r\x1b\x1f\x7f"s), "\\x00\\n\\t\\r\\x1b\\x1f\\x7f");
    EXPECT_EQ(printable("\xc2\x80\xc2\x9f\xc2\xa0"), "\\xc2\\x80\\xc2\\x9f\xc2\xa0");
}

TEST(ValidUtf8, EachInvalidSequenceIsReplaced) {
    EXPECT_EQ(validUtf8("a\x01\xc3\xa4"), "a\x01\xc3\xa4");
    EXPECT_EQ(validUtf8("\xff\xe2\x82z"), "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbdz");
}

TEST(Cut, AMarkReplacesTheRest) {
    EXPECT_EQ(cut("abcd", 4), "abcd");
    EXPECT_EQ(cut("abcd", 3), "ab\xe2\x80\xa6");
    EXPECT_EQ(cut("\xc3\xa4\xc3\xb6\xc3\xbc", 2), "\xc3\xa4\xe2\x80\xa6");
    EXPECT_EQ(cut("abcd", 1), "\xe2\x80\xa6");
    EXPECT_EQ(cut("abcd", 0), "");
}

TEST(Utc, ATimeHasTheFormOfRfc3339) {
    EXPECT_EQ(utc(1767323045), "2026-01-02T03:04:05Z");
}

TEST(Width, CountsCharacters) {
    EXPECT_EQ(width("\xc3\xa4\xe2\x82\xac\xf0\x9f\x90\xa7z"), 4u);
}

TEST(Wrapped, LinesAreBrokenAtBlanksAndIndented) {
    EXPECT_EQ(wrapped("one two three", 2, 9), "one two\n  three");
    EXPECT_EQ(wrapped("one two three", 2, 8), "one\n  two\n  three");
}

TEST(Wrapped, ALongWordGetsItsOwnLine) {
    EXPECT_EQ(wrapped("a verylongword b", 1, 6), "a\n verylongword\n b");
}

TEST(Wrapped, WithoutALimitNoLineIsBroken) {
    EXPECT_EQ(wrapped("one two three", 2, 0), "one two three");
}

} // namespace
} // namespace owbctl
