// CIM times as numbers, and when 0 is valid.
#include "agent/Conversion.hpp"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace agent;

namespace {

std::optional<long> dateIn(const std::string& text) {
    return convertDate(text).number;
}

std::optional<long> intervalIn(const std::string& text) {
    return convertInterval(text, "s").number;
}

TEST(ConvertDate, ADateBecomesSecondsSince1970) {
    EXPECT_EQ(dateIn("20260102030405.000000+000"), 1767323045);
    EXPECT_EQ(dateIn("20380119031407.999999+000"), 2147483647);
}

TEST(ConvertDate, TheStartOf1970IsZeroInEveryZoneAndForm) {
    for (const char* const text : {"19700101000000.000000+000", "19700101010000.999999+060",
                                   "19691231230000.000000-060", "Thu Jan 1 00:00:00 UTC 1970"})
        EXPECT_EQ(dateIn(text), 0) << text;
}

TEST(ConvertDate, AnyOtherTextThatGivesZeroIsNoDate) {
    for (const char* const text :
         {"", "0", "1970", "garbage", "19691231235959.000000+000", "20380119031408.000000+000",
          "****0101000000.000000+000", "99991231000000.000000+000", "00000001000000.000000:000"})
        EXPECT_EQ(dateIn(text), std::nullopt) << text;
}

TEST(ConvertDate, TheNextYearHasFourDigits) {
    EXPECT_EQ(dateIn("019610101000000.000000+000"), std::nullopt) << "one digit less would be a date in 1971";
}

TEST(ConvertInterval, AnIntervalIsConvertedToItsUnit) {
    const std::string text = "00000001020304.567891:000";
    EXPECT_EQ(convertInterval(text, "s").number, 93784);
    EXPECT_EQ(convertInterval(text, "cs").number, 9378457);
    EXPECT_EQ(convertInterval(text, "ms").number, 93784568);
    EXPECT_EQ(convertInterval("00000000001001.000005:000", "us").number, 601000005);
}

TEST(ConvertInterval, TheLongestIntervalOf32BitsIsConverted) {
    EXPECT_EQ(convertInterval("00024855031407.999999:000", "s").number, 2147483647);
    EXPECT_EQ(convertInterval("00000248131356.470000:000", "cs").number, 2147483647);
    EXPECT_EQ(convertInterval("00000024203123.647000:000", "ms").number, 2147483647);
    EXPECT_EQ(convertInterval("00000000003547.483647:000", "us").number, 2147483647);
}

TEST(ConvertInterval, ALongerIntervalWrapsAndHasNoNumber) {
    EXPECT_EQ(convertInterval("00024855031408.000000:000", "s").error,
              "too long for 32 bits in s: the library's number wraps to -2147483648");
    EXPECT_EQ(convertInterval("00000024203123.648000:000", "ms").number, std::nullopt);
    EXPECT_EQ(convertInterval("00000000003547.483648:000", "us").number, std::nullopt);
    EXPECT_EQ(convertInterval("99999999000000.000000:000", "s").number, std::nullopt);
}

TEST(ConvertInterval, AnIntervalThatWrapsToZeroHasNoNumber) {
    EXPECT_EQ(convertInterval("00049710062816.000000:000", "s").error,
              "too long for 32 bits in s: the library's number wraps to 0");
}

TEST(ConvertInterval, AFieldWithASignIsConverted) {
    EXPECT_EQ(convertInterval("-0000001000000.000000:000", "s").number, -86400);
}

TEST(ConvertInterval, ZeroIsValidForATextInTheFormOfAnInterval) {
    for (const char* const text : {"00000000000000.000000:000", "00000000000000.999999:000",
                                   "********000000.******:000", "00000000000000.000000:999"})
        EXPECT_EQ(intervalIn(text), 0) << text;
}

TEST(ConvertInterval, AnyOtherTextThatGivesZeroIsNoInterval) {
    for (const char* const text :
         {"", "0", "garbage", "0000000000000.000000:000", "000000000000000.000000:000",
          "00000000000000,000000:000", "00000000000000.000000+000", "00000000000000.00000:000",
          "00000000000000.000000:00", "00000000000000.000000:0000", "00000000000000.000000:***",
          "0000000000000x.000000:000", " 0000000000000.000000:000", "00000000000000.000000:000\n"})
        EXPECT_EQ(intervalIn(text), std::nullopt) << text;
}

} // namespace
