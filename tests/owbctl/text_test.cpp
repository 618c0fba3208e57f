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

TEST(Printable, CharactersThatChangeTheTextAroundThemAreEscaped) {
    EXPECT_EQ(printable("a\xe2\x80\xae"
                        "b"),
              "a\\xe2\\x80\\xaeb")
        << "U+202E, right-to-left override";
    const std::vector<std::string> all = {
        "\xe2\x80\xaa",     "\xe2\x81\xa6",     "\xe2\x81\xa9", // U+202A, U+2066, U+2069
        "\xe2\x80\x8e",     "\xe2\x80\x8f",     "\xd8\x9c",     // marks: U+200E, U+200F, U+061C
        "\xe2\x80\xa8",     "\xe2\x80\xa9",                     // separators: U+2028, U+2029
        "\xe2\x80\x8b",     "\xef\xbb\xbf",     "\xc2\xad",     // no width: U+200B, U+FEFF, U+00AD
        "\xf3\xa0\x80\xa0", "\xf3\xa0\x81\xbf",                 // tags: U+E0020, U+E007F
    };
    for (const std::string& character : all)
        EXPECT_EQ(printable(character).substr(0, 2), "\\x") << character;
}

TEST(Printable, NeighboursOfTheseCharactersAreNotChanged) {
    const std::string text = "\xc2\xae\xe2\x80\x90\xe2\x80\xa7\xe2\x80\xaf\xe2\x81\xb0\xf0\x9f\x90\xa7";
    EXPECT_EQ(printable(text), text) << "U+00AE, U+2010, U+2027, U+202F, U+2070, U+1F427";
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

TEST(Utc, ATimeHasTheFormOfRfc3339WithMilliseconds) {
    const auto second = std::chrono::system_clock::from_time_t(1767323045);
    EXPECT_EQ(utc(second), "2026-01-02T03:04:05.000Z");
    EXPECT_EQ(utc(second + std::chrono::microseconds(78999)), "2026-01-02T03:04:05.078Z");
}

TEST(Width, CountsCharacters) {
    EXPECT_EQ(width("\xc3\xa4\xe2\x82\xacz\xe2\x80\xa6"), 4u);
}

TEST(Width, WideCharactersCountTwice) {
    EXPECT_EQ(width("\xe4\xb8\xad"), 2u) << "U+4E2D, Chinese";
    EXPECT_EQ(width("\xed\x95\x9c"), 2u) << "U+D55C, Korean";
    EXPECT_EQ(width("\xef\xbc\xa1"), 2u) << "U+FF21, full-width A";
    EXPECT_EQ(width("\xf0\x9f\x90\xa7"), 2u) << "U+1F427, penguin";
    EXPECT_EQ(width("\xef\xbd\xb1"), 1u) << "U+FF71, half-width Katakana";
}

TEST(Width, AnAccentOfItsLetterDoesNotCount) {
    EXPECT_EQ(width("e\xcc\x81"), 1u);
}

TEST(Cut, AWideCharacterIsNotCutInHalf) {
    EXPECT_EQ(cut("\xe4\xb8\xad\xe6\x96\x87x", 5), "\xe4\xb8\xad\xe6\x96\x87x");
    EXPECT_EQ(cut("\xe4\xb8\xad\xe6\x96\x87x", 4), "\xe4\xb8\xad\xe2\x80\xa6");
}

TEST(Cut, AnAccentStaysWithItsLetter) {
    EXPECT_EQ(cut("e\xcc\x81xyz", 3), "e\xcc\x81x\xe2\x80\xa6");
}

TEST(Wrapped, LinesAreBrokenAtBlanksAndIndented) {
    EXPECT_EQ(wrapped("one two three", 2, 9), "one two\n  three");
    EXPECT_EQ(wrapped("one two three", 2, 8), "one\n  two\n  three");
}

TEST(Wrapped, ALongWordGetsItsOwnLine) {
    EXPECT_EQ(wrapped("a verylongword b", 1, 6), "a\n verylongword\n b");
}

TEST(Wrapped, AWordThatIsTooLongIsBrokenAfterItsCommas) {
    EXPECT_EQ(wrapped("x a=1,b=22,c=3 y", 2, 8), "x\n  a=1,\n  b=22,\n  c=3 y");
    EXPECT_EQ(wrapped("x a,b y", 2, 8), "x a,b\n  y") << "a word that fits is not broken";
}

TEST(Wrapped, WithoutALimitNoLineIsBroken) {
    EXPECT_EQ(wrapped("one two three", 2, 0), "one two three");
}

} // namespace
} // namespace owbctl
