#include "OW_Char16.hpp"
#include "OW_String.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace OpenWBEM;

template <class Number>
std::string messageOf(Number (String::*convert)(int) const, const String& text) {
    try {
        return "no exception, " + std::to_string((text.*convert)(10));
    } catch (const StringConversionException& e) {
        EXPECT_EQ(37, e.getSubClassId());
        EXPECT_EQ(-1, e.getErrorCode());
        return e.getMessage();
    }
}

template <class Number>
std::string messageOf(Number (String::*convert)() const, const String& text) {
    try {
        return "no exception, " + std::to_string((text.*convert)());
    } catch (const StringConversionException& e) {
        return e.getMessage();
    }
}

TEST(StringAsInteger, ReadsTheWholeRangeOfEachType) {
    EXPECT_EQ(255, String("255").toUInt8());
    EXPECT_EQ(-128, String("-128").toInt8());
    EXPECT_EQ(127, String("127").toInt8());
    EXPECT_EQ(65535, String("65535").toUInt16());
    EXPECT_EQ(-32768, String("-32768").toInt16());
    EXPECT_EQ(4294967295U, String("4294967295").toUInt32());
    EXPECT_EQ(std::numeric_limits<Int32>::min(), String("-2147483648").toInt32());
    EXPECT_EQ(18446744073709551615ULL, String("18446744073709551615").toUInt64());
    EXPECT_EQ(std::numeric_limits<Int64>::min(), String("-9223372036854775808").toInt64());
    EXPECT_EQ(7U, String("7").toUnsignedInt());
    EXPECT_EQ(-7, String("-7").toInt());
}

TEST(StringAsInteger, AcceptsLeadingBlanksAndASign) {
    EXPECT_EQ(5, String(" \t\n+5").toInt32());
    EXPECT_EQ(5U, String(" +5").toUInt8());
}

TEST(StringAsInteger, UsesTheGivenBase) {
    EXPECT_EQ(255, String("fF").toUInt8(16));
    EXPECT_EQ(255, String("0xff").toUInt8(0));
    EXPECT_EQ(8, String("010").toInt32(0));
    EXPECT_EQ(10, String("010").toInt32());
    EXPECT_THROW(String("1").toInt32(1), StringConversionException);
}

TEST(StringAsInteger, IsZeroForTheEmptyTextButThrowsForTheNullString) {
    EXPECT_EQ(0U, String("").toUInt32());
    EXPECT_EQ(0, String("").toInt64());
    EXPECT_EQ("Unable to convert \"\" into UInt32", messageOf(&String::toUInt32, String()));
}

TEST(StringAsInteger, MinusOneIsTheMaximumOfTheWideUnsignedTypes) {
    EXPECT_EQ(4294967295U, String("-1").toUInt32());
    EXPECT_EQ(18446744073709551615ULL, String("-1").toUInt64());
    EXPECT_EQ("Unable to convert \"-1\" into UInt8", messageOf(&String::toUInt8, "-1"));
    EXPECT_EQ("Unable to convert \"-1\" into UInt16", messageOf(&String::toUInt16, "-1"));
}

TEST(StringAsInteger, ReadsANegativeNumberAsUnsignedModulo32Bits) {
    EXPECT_EQ(1U, String("-4294967295").toUInt32());
    EXPECT_EQ(255, String("-4294967041").toUInt8());
    EXPECT_EQ(65535, String("-4294901761").toUInt16());
    EXPECT_EQ("Unable to convert \"-4294967296\" into UInt32", messageOf(&String::toUInt32, "-4294967296"));
    EXPECT_EQ("Unable to convert \"18446744073709551615\" into UInt32",
              messageOf(&String::toUInt32, "18446744073709551615"));
}

TEST(StringAsInteger, RejectsNumbersOutOfRange) {
    EXPECT_EQ("Unable to convert \"256\" into UInt8", messageOf(&String::toUInt8, "256"));
    EXPECT_EQ("Unable to convert \"128\" into Int8", messageOf(&String::toInt8, "128"));
    EXPECT_EQ("Unable to convert \"65536\" into UInt16", messageOf(&String::toUInt16, "65536"));
    EXPECT_EQ("Unable to convert \"32768\" into Int16", messageOf(&String::toInt16, "32768"));
    EXPECT_EQ("Unable to convert \"4294967296\" into UInt32", messageOf(&String::toUInt32, "4294967296"));
    EXPECT_EQ("Unable to convert \"2147483648\" into Int32", messageOf(&String::toInt32, "2147483648"));
    EXPECT_EQ("Unable to convert \"18446744073709551616\" into UInt64",
              messageOf(&String::toUInt64, "18446744073709551616"));
    EXPECT_EQ("Unable to convert \"9223372036854775808\" into Int64",
              messageOf(&String::toInt64, "9223372036854775808"));
}

TEST(StringAsInteger, RejectsTrailingCharacters) {
    for (const char* text : {"abc", "1x", "1 ", " ", "-", "+", "1.0", "0x10"})
        EXPECT_EQ("Unable to convert \"" + std::string(text) + "\" into Int32",
                  messageOf(&String::toInt32, text));
    EXPECT_THROW(String("1\0", 2).toInt32(), StringConversionException);
}

TEST(StringAsReal, AcceptsTheFormsOfStrtod) {
    EXPECT_EQ(1.5, String("1.5").toReal64());
    EXPECT_EQ(-1.5, String(" -1.5").toReal64());
    EXPECT_EQ(1e20, String("1E+20").toReal64());
    EXPECT_EQ(16, String("0x10").toReal64());
    EXPECT_EQ(0, String("").toReal64());
    EXPECT_TRUE(std::isnan(String("nan").toReal64()));
    EXPECT_EQ(0.1F, String("0.1").toReal32());
    EXPECT_TRUE(std::isnan(String("nan").toReal32()));
}

TEST(StringAsReal, RejectsInfinitiesAndMalformedNumbers) {
    for (const char* text : {"inf", "-inf", "1e999", "1.5x", "1,5", "abc", " "}) {
        EXPECT_EQ("Unable to convert \"" + std::string(text) + "\" into Real64",
                  messageOf(&String::toReal64, text));
        EXPECT_EQ("Unable to convert \"" + std::string(text) + "\" into Real32",
                  messageOf(&String::toReal32, text));
    }
    EXPECT_EQ("Unable to convert \"1e39\" into Real32", messageOf(&String::toReal32, "1e39"));
    EXPECT_EQ("Unable to convert \"\" into Real64", messageOf(&String::toReal64, String()));
}

TEST(StringAsReal, AcceptsTheMaximumReal32InEightDigits) {
    EXPECT_EQ(std::numeric_limits<Real32>::max(), String("3.4028235e+38").toReal32());
}

TEST(StringAsBool, IsTrueOrFalseInAnyCase) {
    EXPECT_TRUE(String("tRUE").toBool());
    EXPECT_FALSE(String("FALSE").toBool());
    EXPECT_EQ("Unable to convert \"1\" into bool", messageOf(&String::toBool, "1"));
    EXPECT_EQ("Unable to convert \"\" into bool", messageOf(&String::toBool, String()));
}

TEST(StringAsChar16, IsItsFirstCharacter) {
    EXPECT_EQ(0x20AC, String("\xe2\x82\xac!").toChar16().getValue());
}

} // namespace
