// Values and headings as tables show them.
#include "formats/Value.hpp"

#include <gtest/gtest.h>

namespace owbctl {

using namespace agent;

namespace {

constexpr Style plain{};
constexpr Style raw{false, true, false};
constexpr Style human{false, false, true};

std::string valueOf(long group, const char* name, const std::vector<std::string>& values,
                    const Style& style = plain) {
    const Row row{0, {{findAttribute(group, name), values}}};
    return valueText(row.properties.front(), row, style);
}

std::string headingOf(long group, const char* name, const Style& style = plain) {
    return heading(*findAttribute(group, name), style);
}

TEST(Value, NoValueAnEmptyTextAndADashDiffer) {
    EXPECT_EQ(cell({}), "-");
    EXPECT_EQ(cell({""}), "\"\"");
    EXPECT_EQ(cell({"-"}), "\"-\"");
    EXPECT_EQ(cell({"\"\""}), "\"\"\"\"") << "a text of two quotes";
    EXPECT_EQ(cell({"\"-\""}), "\"\"-\"\"");
    EXPECT_EQ(cell({"\"", "a-b", "say \"x\""}), "\", a-b, say \"x\"") << "nothing else has quotes";
    EXPECT_EQ(valueOf(2, "SystemName", {""}), "\"\"");
    EXPECT_EQ(valueOf(2, "SystemName", {"-"}), "\"-\"");
    EXPECT_EQ(valueOf(2, "SystemName", {""}, raw), "") << "raw values are as they arrived";
    EXPECT_EQ(valueOf(0, "OtherIdentifyingInfo", {"", "a"}), "\"\", a");
}

TEST(Value, ACodeHasItsName) {
    EXPECT_EQ(valueOf(9, "OperationalStatus", {"2"}), "up (2)");
    EXPECT_EQ(valueOf(9, "OperationalStatus", {"2", "16"}), "up (2), lower layer down (16)");
    EXPECT_EQ(valueOf(9, "OperationalStatus", {"99"}), "99") << "no name";
    EXPECT_EQ(valueOf(2, "SysServices", {"72"}), "72") << "a sum of flags";
}

TEST(Value, ADateIsReadable) {
    EXPECT_EQ(readableDate("20261122101503.123456+330"), "2026-11-22 10:15:03 +0530");
    EXPECT_EQ(readableDate("20261122101503.000000-060"), "2026-11-22 10:15:03 -0100");
}

TEST(Value, ATextThatIsNoDateIsNotChanged) {
    for (const char* const text : {"", "20261122101503.000000+06", "2026112210****.000000+060",
                                   "00000001020304.000000:000", "20261122101503.000000+***"})
        EXPECT_EQ(readableDate(text), text);
}

TEST(Value, AnIntervalIsReadable) {
    EXPECT_EQ(readableInterval("00000000000007.250000:000"), "00:00:07.25");
    EXPECT_EQ(readableInterval("00000012235959.999999:000"), "12-23:59:59.99");
    EXPECT_EQ(readableInterval("20261122101503.000000+060"), "20261122101503.000000+060") << "a date";
    EXPECT_EQ(readableInterval("odd"), "odd");
}

TEST(Value, DatesAndIntervalsAreReadableInTables) {
    EXPECT_EQ(valueOf(4, "LastBootUpTime", {"20261122101503.000000+060"}), "2026-11-22 10:15:03 +0100");
    EXPECT_EQ(valueOf(22, "TotalCPUTime", {"00000000000007.250000:000"}), "00:00:07.25");
}

TEST(Value, ARawValueIsTheTextOfTheItem) {
    EXPECT_EQ(valueOf(9, "OperationalStatus", {"2", "16"}, raw), "2, 16");
    EXPECT_EQ(valueOf(4, "LastBootUpTime", {"20261122101503.000000+060"}, raw), "20261122101503.000000+060");
    EXPECT_EQ(valueOf(2, "SystemName", {"a\nb"}, raw), "a\\nb") << "but for control characters";
}

TEST(Value, SmallSizesAreExact) {
    EXPECT_EQ(readableBytes(0), "0 B");
    EXPECT_EQ(readableBytes(9999), "9999 B");
    EXPECT_EQ(readableBytes(10000), "9.8 KiB");
}

TEST(Value, LargeSizesHaveALargerUnit) {
    EXPECT_EQ(readableBytes(65536), "64 KiB");
    EXPECT_EQ(readableBytes(1536.0 * 1024 * 1024), "1.5 GiB");
    EXPECT_EQ(readableBytes(5e16), "45475 TiB") << "the largest unit";
}

TEST(Value, SizesAndSpeedsAreScaledOnRequest) {
    EXPECT_EQ(valueOf(9, "Speed", {"1000000000"}), "1000000000");
    EXPECT_EQ(valueOf(9, "Speed", {"1000000000"}, human), "1 Gbit/s");
    EXPECT_EQ(valueOf(9, "Speed", {"2500000"}, human), "2.5 Mbit/s");
    EXPECT_EQ(valueOf(18, "MaxMediaSize", {"500107608"}, human), "477 GiB") << "kB";
    EXPECT_EQ(valueOf(9, "MaxDataSize", {"odd"}, human), "odd B");
    EXPECT_EQ(valueOf(5, "TimeoutMax", {"120000"}, human), "120000") << "no size";
}

TEST(Value, BlocksAreScaledByTheBlockSizeOfTheirRow) {
    const Row row{
        0, {{findAttribute(3, "Blocksize"), {"4096"}}, {findAttribute(3, "NumberOfBlocks"), {"262144"}}}};
    EXPECT_EQ(valueText(row.properties[1], row, human), "1 GiB");
    EXPECT_EQ(valueOf(3, "NumberOfBlocks", {"262144"}, human), "262144 blocks")
        << "the size of a block is unknown";
}

TEST(Heading, HasTheUnitOfASize) {
    EXPECT_EQ(headingOf(9, "Speed"), "Speed (bit/s)");
    EXPECT_EQ(headingOf(22, "RealText"), "RealText (kB)");
    EXPECT_EQ(headingOf(5, "TimeoutMin"), "TimeoutMin (ms)");
    EXPECT_EQ(headingOf(9, "Speed", raw), "Speed (bit/s)");
}

TEST(Heading, HasNoUnitWhereTheCellsHaveIt) {
    EXPECT_EQ(headingOf(9, "Speed", human), "Speed");
    EXPECT_EQ(headingOf(5, "TimeoutMin", human), "TimeoutMin (ms)");
}

TEST(Heading, HasNoUnitForCounts) {
    EXPECT_EQ(headingOf(10, "InUcastPkts"), "InUcastPkts");
}

} // namespace
} // namespace owbctl
