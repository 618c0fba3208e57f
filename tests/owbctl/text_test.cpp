#include "Text.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

TEST(Printable, WellFormedTextStaysAsItIs) {
    const std::string text = "a\\b \xc3\xa4 \xe2\x82\xac \xf0\x9f\x90\xa7 \xf4\x8f\xbf\xbf";
    EXPECT_EQ(printable(text), text);
}

TEST(Printable, BytesThatAreNotUtf8AreEscaped) {
    EXPECT_EQ(printable("\xff"), "\\xff");
    EXPECT_EQ(printable("\x80z"), "\\x80z") << "continuation without a lead";
    EXPECT_EQ(printable("\xe2\x82"), "\\xe2\\x82") << "cut off";
    EXPECT_EQ(printable("\xc3z"), "\\xc3z") << "lead without a continuation";
    EXPECT_EQ(printable("\xc0\xaf"), "\\xc0\\xaf") << "longer than need be";
    EXPECT_EQ(printable("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "surrogate";
    EXPECT_EQ(printable("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80") << "beyond U+10FFFF";
}

TEST(Printable, ControlCharactersOfBothSetsAreEscaped) {
    using namespace std::string_literals;
    EXPECT_EQ(printable("\0\n\t\r\x1b\x1f\x7f"s), "\\x00\\n\\t\\r\\x1b\\x1f\\x7f");
    EXPECT_EQ(printable("\xc2\x80\xc2\x9f\xc2\xa0"), "\\xc2\\x80\\xc2\\x9f\xc2\xa0");
}

TEST(Width, CountsCharacters) {
    EXPECT_EQ(width("\xc3\xa4\xe2\x82\xac\xf0\x9f\x90\xa7z"), 4u);
}

TEST(Wrapped, LinesAreBrokenAtBlanksAndIndented) {
    EXPECT_EQ(wrapped("one two three", 2, 9), "one two\n  three");
    EXPECT_EQ(wrapped("one two three", 2, 8), "one\n  two\n  three");
}

TEST(Wrapped, ALongWordHasALineOfItsOwn) {
    EXPECT_EQ(wrapped("a verylongword b", 1, 6), "a\n verylongword\n b");
}

TEST(Wrapped, NothingIsBrokenWithoutALimit) {
    EXPECT_EQ(wrapped("one two three", 2, 0), "one two three");
}

} // namespace
} // namespace owbctl
