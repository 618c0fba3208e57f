#include "util/Ascii.hpp"
#include "util/Base64.hpp"
#include "util/OneLine.hpp"
#include "util/Percent.hpp"

#include <gtest/gtest.h>

TEST(Ascii, LettersOutsideAsciiKeepTheirCase) {
    EXPECT_TRUE(ascii::equalsIgnoreCase("Chunked", "cHUNKED"));
    EXPECT_FALSE(ascii::equalsIgnoreCase("\xc4", "\xe4"));
    EXPECT_FALSE(ascii::equalsIgnoreCase("chunk", "chunked"));
}

TEST(Ascii, TrimRemovesWhiteSpaceAtBothEndsOnly) {
    EXPECT_EQ("a b", ascii::trim(" \t a b\r\n"));
    EXPECT_EQ("", ascii::trim(" \r\n"));
}

TEST(Ascii, ControlCharactersAreBelowABlankAndDel) {
    EXPECT_TRUE(ascii::holdsControls(std::string_view("a\0b", 3)));
    EXPECT_TRUE(ascii::holdsControls("a\x7f"));
    EXPECT_FALSE(ascii::holdsControls(" ~\x80\xff"));
}

TEST(Base64, EncodesTheExamplesOfRfc4648) {
    EXPECT_EQ("", util::base64Encoded(""));
    EXPECT_EQ("Zg==", util::base64Encoded("f"));
    EXPECT_EQ("Zm8=", util::base64Encoded("fo"));
    EXPECT_EQ("Zm9vYmFy", util::base64Encoded("foobar"));
}

TEST(Base64, DecodesWithAndWithoutPadding) {
    EXPECT_EQ("f", util::base64Decoded("Zg=="));
    EXPECT_EQ("f", util::base64Decoded("Zg"));
    EXPECT_EQ("foobar", util::base64Decoded("Zm9vYmFy"));
    EXPECT_EQ(std::string("\xff\xfe\x00", 3), util::base64Decoded("//4A"));
}

TEST(Base64, RejectsWhatNoEncoderProduces) {
    for (const char* const text : {"Z", "Zg===", "Z!==", "Zg==Zg==", "Zm9v YmFy"})
        EXPECT_FALSE(util::base64Decoded(text)) << text;
}

TEST(Percent, DecodesEscapesAndCopiesTheRest) {
    EXPECT_EQ("root/cimv2", util::percentDecoded("root%2Fcimv2"));
    EXPECT_EQ("%2", util::percentDecoded("%2"));
    EXPECT_EQ("%zz/", util::percentDecoded("%zz%2f"));
    EXPECT_EQ("%2f", util::percentDecoded("%252f"));
}

TEST(OneLine, ControlCharactersBecomeBlanks) {
    EXPECT_EQ("a  b \xe4", util::onOneLine("a\r\nb\x7f\xe4"));
}

TEST(OneLine, BytesOutsideAsciiBecomeEscapeSequences) {
    EXPECT_EQ("a \\xc3\\xa4", util::onOneAsciiLine("a\n\xc3\xa4"));
}

TEST(OneLine, ALineIsCutAtItsMaximum) {
    EXPECT_EQ(util::maximumLine, util::onOneLine(std::string(util::maximumLine, 'x')).size());
    EXPECT_EQ(util::maximumLine, util::onOneLine(std::string(util::maximumLine + 1, 'x')).size());
    EXPECT_EQ(util::maximumLine, util::onOneAsciiLine(std::string(util::maximumLine, '\xe4')).size());
}
