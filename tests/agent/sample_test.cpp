#include "agent/Sample.hpp"

#include <gtest/gtest.h>

using namespace agent;

namespace {

Row row(long number, const std::string& inDatagrams) {
    return {number, {{findAttribute(14, "InDatagrams"), {inDatagrams}}}};
}

Reading reading(std::vector<Row> rows, double moment) {
    return {{14, "QAV_UDPStatisticalData", OWB_DONE, std::move(rows)}, moment};
}

std::vector<SampledRow> compare(const Reading& now, const Reading* before) {
    return sampleOf(2, {}, now, before).rows;
}

Row interface(long number, const std::string& name, const std::string& octets) {
    return {number, {{findAttribute(10, "InstanceID"), {name}}, {findAttribute(10, "InOctets"), {octets}}}};
}

Reading interfaces(std::vector<Row> rows) {
    return {{10, "QAV_NetworkPortStatistics", OWB_DONE, std::move(rows)}, 0};
}

bool isCounter(long group, const std::string& property) {
    return findAttribute(group, property)->kind == Kind::counter;
}

} // namespace

TEST(Sample, MarksNothingInTheFirstReading) {
    const auto rows = compare(reading({row(0, "5")}, 0), nullptr);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_FALSE(rows[0].properties[0].isChanged);
    EXPECT_FALSE(rows[0].properties[0].perSecond);
}

TEST(Sample, GivesTheRateOfACounter) {
    const Reading before = reading({row(0, "1005")}, 10);
    const auto rows = compare(reading({row(0, "1010")}, 12), &before);
    EXPECT_TRUE(rows[0].properties[0].isChanged);
    EXPECT_DOUBLE_EQ(rows[0].properties[0].perSecond.value(), 2.5);
}

TEST(Sample, GivesNoRateOfOtherKinds) {
    const Attribute* const users = findAttribute(4, "NumberOfUsers");
    const Reading before{{4, "QAV_OperatingSystem", OWB_DONE, {{0, {{users, {"1"}}}}}}, 0};
    const Reading now{{4, "QAV_OperatingSystem", OWB_DONE, {{0, {{users, {"2"}}}}}}, 1};
    const auto rows = compare(now, &before);
    EXPECT_TRUE(rows[0].properties[0].isChanged);
    EXPECT_FALSE(rows[0].properties[0].perSecond);
}

TEST(Sample, MarksAllPropertiesOfANewRow) {
    const Reading before = reading({row(0, "5")}, 0);
    const auto rows = compare(reading({row(0, "5"), row(3, "5")}, 1), &before);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_FALSE(rows[0].properties[0].isChanged);
    EXPECT_TRUE(rows[1].properties[0].isChanged);
    EXPECT_EQ(rows[1].number, 3);
}

TEST(Sample, ComparesTheRowsOfOneInstance) {
    const Reading before = interfaces({interface(0, "eth0", "5"), interface(1, "eth1", "7")});
    const Sample sample = sampleOf(2, {}, interfaces({interface(0, "eth1", "7")}), &before);
    ASSERT_EQ(sample.rows.size(), 1U);
    EXPECT_FALSE(sample.rows[0].properties[0].isChanged) << "eth1 is row 0 now";
    EXPECT_FALSE(sample.rows[0].properties[1].isChanged);
    ASSERT_EQ(sample.vanished.size(), 1U);
    EXPECT_EQ(sample.vanished[0].number, 0);
    EXPECT_EQ(sample.vanished[0].properties[0].values[0], "eth0");
}

TEST(Sample, ComparesByNumberIfTwoRowsLookAlike) {
    const Reading before = interfaces({interface(0, "eth0", "5"), interface(1, "eth0", "7")});
    const Sample sample = sampleOf(2, {}, interfaces({interface(0, "eth0", "5")}), &before);
    EXPECT_FALSE(sample.rows[0].properties[1].isChanged);
    ASSERT_EQ(sample.vanished.size(), 1U);
    EXPECT_EQ(sample.vanished[0].number, 1);
}

TEST(Sample, AFailedReadingHasNoVanishedRows) {
    const Reading before = interfaces({interface(0, "eth0", "5")});
    Reading failed = interfaces({});
    failed.group.status = OWB_EXCEPTION;
    EXPECT_TRUE(sampleOf(2, {}, failed, &before).vanished.empty());
}

TEST(Sample, KeepsTheChangedValuesAndWhatIdentifiesTheirRow) {
    const auto withErrors = [](Row row) {
        row.properties.push_back({findAttribute(10, "InErrors"), {"0"}});
        return row;
    };
    const Reading before =
        interfaces({withErrors(interface(0, "eth0", "5")), withErrors(interface(1, "eth1", "7"))});
    Sample sample = sampleOf(
        2, {}, interfaces({withErrors(interface(0, "eth0", "5")), withErrors(interface(1, "eth1", "8"))}),
        &before);
    keepChanges(sample);
    EXPECT_TRUE(sample.isReduced);
    ASSERT_EQ(sample.rows.size(), 1U);
    EXPECT_EQ(sample.rows[0].number, 1);
    ASSERT_EQ(sample.rows[0].properties.size(), 2U);
    EXPECT_STREQ(sample.rows[0].properties[0].property.attribute->property, "InstanceID");
    EXPECT_STREQ(sample.rows[0].properties[1].property.attribute->property, "InOctets");
}

TEST(Sample, KeepsNothingOfTheFirstReading) {
    Sample sample = sampleOf(1, {}, interfaces({interface(0, "eth0", "5")}), nullptr);
    keepChanges(sample);
    EXPECT_TRUE(sample.rows.empty());
    EXPECT_EQ(sample.group.rows.size(), 1U);
}

TEST(Sample, CountsStatisticsOfProtocolsAndPorts) {
    EXPECT_TRUE(isCounter(6, "InSegs"));
    EXPECT_TRUE(isCounter(10, "InOctets"));
    EXPECT_TRUE(isCounter(11, "OutAddrMaskReps"));
    EXPECT_TRUE(isCounter(13, "FragCreates"));
    EXPECT_TRUE(isCounter(14, "NoPorts"));
}

TEST(Sample, CountsFailuresOfDevices) {
    EXPECT_TRUE(isCounter(3, "AllocationFailures"));
    EXPECT_TRUE(isCounter(18, "Errors"));
    EXPECT_TRUE(isCounter(21, "_HR_DEVICE_ERRORS"));
}

TEST(Sample, DoesNotCountWhatRisesAndFalls) {
    EXPECT_FALSE(isCounter(6, "CurrEstab"));
    EXPECT_FALSE(isCounter(10, "OutQLen"));
    EXPECT_FALSE(isCounter(10, "InstanceID"));
    EXPECT_FALSE(isCounter(3, "StorageUsed"));
    EXPECT_FALSE(isCounter(4, "NumberOfProcesses"));
    EXPECT_FALSE(isCounter(7, "LocalPort"));
}

TEST(Rate, IsTheGrowthInOneSecond) {
    EXPECT_DOUBLE_EQ(*ratePerSecond("10", "15", 2), 2.5);
    EXPECT_DOUBLE_EQ(*ratePerSecond("7", "7", 1), 0);
    EXPECT_DOUBLE_EQ(*ratePerSecond("18446744073709551614", "18446744073709551615", 0.5), 2);
}

TEST(Rate, IsUnknownWithoutTwoNumbersAndTime) {
    EXPECT_FALSE(ratePerSecond("10", "9", 1)) << "the counter restarted";
    EXPECT_FALSE(ratePerSecond("10", "x", 1));
    EXPECT_FALSE(ratePerSecond("", "1", 1));
    EXPECT_FALSE(ratePerSecond("1", "18446744073709551616", 1));
    EXPECT_FALSE(ratePerSecond("1", "2", 0));
}
