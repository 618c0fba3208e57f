#include "util/Number.hpp"

#include <cstdint>
#include <gtest/gtest.h>

using util::decimal;

TEST(Number, IsTheWholeText) {
    EXPECT_EQ(65535, util::number<std::uint16_t>("65535"));
    EXPECT_EQ(0662, util::number<unsigned>("662", 8));
    for (const char* const text : {"", "65536", "-1", "+1", " 1", "1 ", "x"})
        EXPECT_FALSE(util::number<std::uint16_t>(text)) << text;
}

TEST(Decimal, ReadsDigitsUpToTheLargestNumberOfTheType) {
    EXPECT_EQ(decimal<std::int32_t>("0"), 0);
    EXPECT_EQ(decimal<std::int32_t>("007"), 7);
    EXPECT_EQ(decimal<std::int32_t>("2147483647"), 2147483647);
    EXPECT_EQ(decimal<std::uint64_t>("18446744073709551615"), UINT64_MAX);
}

TEST(Decimal, RejectsAnyOtherText) {
    for (const char* const text : {"", "-1", "-0", "+1", " 1", "1 ", "1x", "0x1", "1.0", "2147483648",
                                   "4294967296", "18446744073709551616"})
        EXPECT_EQ(decimal<std::int32_t>(text), std::nullopt) << text;
    EXPECT_EQ(decimal<std::uint64_t>("18446744073709551616"), std::nullopt);
}
