#include "metrics/Decimal.hpp"

#include <gtest/gtest.h>

using namespace metrics;

TEST(Decimal, ACounterHasSixtyFourBitsAndNoLeadingZeros) {
    EXPECT_EQ("18446744073709551615", digitsOf("18446744073709551615"));
    EXPECT_EQ("7", digitsOf("007"));
    for (const char* const text : {"18446744073709551616", "-1", "+1", "1.5", " 1", "1 ", "", "0x1", "nan"})
        EXPECT_FALSE(digitsOf(text)) << text;
}

TEST(Decimal, AnIntegerMayBeNegative) {
    EXPECT_EQ("-9223372036854775808", integerOf("-9223372036854775808"));
    EXPECT_EQ("18446744073709551615", integerOf("18446744073709551615"));
    EXPECT_EQ("0", integerOf("-0"));
    EXPECT_FALSE(integerOf("-9223372036854775809"));
    EXPECT_FALSE(integerOf("--1"));
}

TEST(Decimal, SumsHaveAnyLength) {
    EXPECT_EQ("36893488147419103230", sumOf("18446744073709551615", "18446744073709551615"));
    EXPECT_EQ("1000", sumOf("999", "1"));
    EXPECT_EQ("1000", sumOf("1", "999"));
    EXPECT_EQ("0", sumOf("0", "0"));
}

TEST(Decimal, ProductsHaveAnyLength) {
    EXPECT_EQ("340282366920938463426481119284349108225",
              productOf("18446744073709551615", "18446744073709551615"));
    EXPECT_EQ("12630519808", productOf("3083623", "4096"));
    EXPECT_EQ("0", productOf("0", "18446744073709551615"));
}

TEST(Decimal, APointDividesByPowersOfTen) {
    EXPECT_EQ("1.5", withPoint("1500", 3));
    EXPECT_EQ("0.2", withPoint("200", 3));
    EXPECT_EQ("0.000001", withPoint("1", 6));
    EXPECT_EQ("-0.5", withPoint("-500", 3));
    EXPECT_EQ("0", withPoint("0", 3));
    EXPECT_EQ("100", withPoint("100000", 3));
    EXPECT_EQ("100", withPoint("100", 0));
}

TEST(Timestamp, ADateIsInUtcWithItsFraction) {
    EXPECT_EQ("0", timestampOf("19700101000000.000000+000"));
    EXPECT_EQ("1795344083.84827", timestampOf("20261122104123.848270+000"));
    EXPECT_EQ("1795340483", timestampOf("20261122104123.000000+060"));
    EXPECT_EQ("1795347683", timestampOf("20261122104123.000000-060"));
    EXPECT_EQ("1795344083", timestampOf("20261122104123.******+000"));
}

TEST(Timestamp, ADateBeyond2038OrBefore1970IsRight) {
    EXPECT_EQ("2147483648", timestampOf("20380119031408.000000+000"));
    EXPECT_EQ("4102444800", timestampOf("21000101000000.000000+000"));
    EXPECT_EQ("253402300799.999999", timestampOf("99991231235959.999999+000"));
    EXPECT_EQ("-0.5", timestampOf("19691231235959.500000+000"));
    EXPECT_EQ("-62135596800", timestampOf("00010101000000.000000+000"));
    EXPECT_EQ("-62167219200", timestampOf("00000101000000.000000+000"));
}

TEST(Timestamp, LeapDaysExistInLeapYearsOnly) {
    EXPECT_EQ("951782400", timestampOf("20000229000000.000000+000"));
    EXPECT_EQ("1709164800", timestampOf("20240229000000.000000+000"));
    EXPECT_EQ("1709251200", timestampOf("20240301000000.000000+000"));
    EXPECT_FALSE(timestampOf("21000229000000.000000+000"));
    EXPECT_FALSE(timestampOf("20230229000000.000000+000"));
}

TEST(Timestamp, ATextThatIsNoDateHasNone) {
    for (const char* const text :
         {"", "2026", "20261322000000.000000+000", "20260022000000.000000+000", "20260100000000.000000+000",
          "20260132000000.000000+000", "20260101240000.000000+000", "20260101006000.000000+000",
          "20260101000061.000000+000", "20260101000000,000000+000", "20260101000000.000000*000",
          "20260101000000.000000+0x0", "2026****000000.000000+000", "00000001000000.000000:000",
          "20260101000000.000000+0000"})
        EXPECT_FALSE(timestampOf(text)) << text;
}

TEST(Interval, IsInMicroseconds) {
    EXPECT_EQ("0", microsecondsOf("00000000000000.000000:000"));
    EXPECT_EQ("93784500000", microsecondsOf("00000001020304.500000:000"));
    EXPECT_EQ("8639999999999999999", microsecondsOf("99999999235959.999999:000"));
    for (const char* const text : {"", "00000001020304.500000+000", "0000000102030450000000:00",
                                   "-0000001020304.500000:000", "00000001250304.500000:000"})
        EXPECT_FALSE(microsecondsOf(text)) << text;
}
