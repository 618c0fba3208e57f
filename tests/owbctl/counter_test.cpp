#include "agent/Items.hpp"
#include "agent/Counter.hpp"

#include <gtest/gtest.h>

namespace owbctl {
namespace {

bool counts(long group, const std::string& property) {
    return isCounter(*findProperty(group, property));
}

TEST(Counter, TheStatisticsOfProtocolsAndPortsAreCounters) {
    EXPECT_TRUE(counts(6, "InSegs"));
    EXPECT_TRUE(counts(10, "InOctets"));
    EXPECT_TRUE(counts(11, "OutAddrMaskReps"));
    EXPECT_TRUE(counts(13, "FragCreates"));
    EXPECT_TRUE(counts(14, "NoPorts"));
}

TEST(Counter, FailuresOfDevicesAreCounters) {
    EXPECT_TRUE(counts(3, "AllocationFailures"));
    EXPECT_TRUE(counts(18, "Errors"));
    EXPECT_TRUE(counts(21, "_HR_DEVICE_ERRORS"));
}

TEST(Counter, WhatGoesUpAndDownIsNone) {
    EXPECT_FALSE(counts(6, "CurrEstab"));
    EXPECT_FALSE(counts(10, "OutQLen"));
    EXPECT_FALSE(counts(10, "InstanceID"));
    EXPECT_FALSE(counts(3, "StorageUsed"));
    EXPECT_FALSE(counts(4, "NumberOfProcesses"));
    EXPECT_FALSE(counts(7, "LocalPort"));
}

TEST(Rate, IsTheGrowthBySecond) {
    EXPECT_DOUBLE_EQ(*ratePerSecond("10", "15", 2), 2.5);
    EXPECT_DOUBLE_EQ(*ratePerSecond("7", "7", 1), 0);
    EXPECT_DOUBLE_EQ(*ratePerSecond("18446744073709551614", "18446744073709551615", 0.5), 2);
}

TEST(Rate, IsUnknownWhereNothingCanBeCounted) {
    EXPECT_FALSE(ratePerSecond("10", "9", 1)) << "it has started anew";
    EXPECT_FALSE(ratePerSecond("10", "x", 1));
    EXPECT_FALSE(ratePerSecond("", "1", 1));
    EXPECT_FALSE(ratePerSecond("1", "18446744073709551616", 1));
    EXPECT_FALSE(ratePerSecond("1", "2", 0));
}

} // namespace
} // namespace owbctl
