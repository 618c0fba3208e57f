#include "exporter/Pages.hpp"

#include <gtest/gtest.h>

using namespace exporter;
using namespace std::chrono_literals;

TEST(ScrapeLimit, AMarginIsLeftForTheTransfer) {
    EXPECT_EQ(9500ms, scrapeLimit("10", 60s));
    EXPECT_EQ(9500ms, scrapeLimit("10.000000", 60s));
    EXPECT_EQ(500ms, scrapeLimit("1", 60s));
    EXPECT_EQ(100ms, scrapeLimit("0.2", 60s)) << "half of a short time";
}

TEST(ScrapeLimit, IsAtMostThatOfTheCommandLine) {
    EXPECT_EQ(5s, scrapeLimit("10", 5s));
    EXPECT_EQ(5s, scrapeLimit("1e300", 5s));
}

TEST(ScrapeLimit, AnInvalidFieldCountsAsMissing) {
    for (const char* const field : {"", "soon", "0", "-1", "nan", "inf", "-inf", "1s", " 1", "1e999"})
        EXPECT_EQ(5s, scrapeLimit(field, 5s)) << field;
}
