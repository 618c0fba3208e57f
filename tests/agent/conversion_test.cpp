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
