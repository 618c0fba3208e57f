#include "agent/Number.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

TEST(Decimal, DigitsAreANumberUpToTheLargestOf32Bits) {
    EXPECT_EQ(decimal("0"), 0);
    EXPECT_EQ(decimal("007"), 7);
    EXPECT_EQ(decimal("2147483647"), 2147483647);
}

TEST(Decimal, AnythingElseIsNone) {
    for (const char* const text : {"", "-1", "-0", "+1", " 1", "1 ", "1x", "0x1", "1.0", "2147483648",
                                   "4294967296", "18446744073709551616"})
        EXPECT_EQ(decimal(text), std::nullopt) << text;
}

} // namespace
} // namespace owbctl
