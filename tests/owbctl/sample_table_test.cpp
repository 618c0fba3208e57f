// Tables of samples: marks of changed values.
#include "agent/Sample.hpp"
#include "formats/GroupTable.hpp"

#include <gtest/gtest.h>

namespace owbctl {

using namespace agent;

namespace {

Row row(long number, const std::string& inDatagrams, const std::string& noPorts) {
    return {number,
            {{findAttribute(14, "InDatagrams"), {inDatagrams}}, {findAttribute(14, "NoPorts"), {noPorts}}}};
}

Reading reading(std::vector<Row> rows, double moment) {
    return {{14, "QAV_UDPStatisticalData", OWB_DONE, std::move(rows)}, moment};
}

std::string table(const Reading& now, const Reading* before, std::size_t limit = 0) {
    return sampleTable(sampleOf(2, {}, now, before), limit);
}

TEST(Sample, TheFirstReadingHasNoMarks) {
    const Reading first = reading({row(0, "5", "1")}, 0);
    EXPECT_EQ(table(first, nullptr), "InDatagrams  5\nNoPorts      1\n");
}

TEST(Sample, ACounterShowsItsRate) {
    const Reading first = reading({row(0, "1005", "1")}, 10);
    const Reading second = reading({row(0, "1010", "1")}, 12);
    EXPECT_EQ(table(second, &first), "InDatagrams  1010  +2.5/s\nNoPorts      1\n");
}

TEST(Sample, AHighRateIsShownWithoutDecimals) {
    const Reading first = reading({row(0, "0", "0")}, 0);
    const Reading second = reading({row(0, "99999", "10")}, 1);
    EXPECT_EQ(table(second, &first), "InDatagrams  99999  +99999/s\nNoPorts      10     +10.0/s\n");
}

TEST(Sample, AnyOtherChangeIsMarked) {
    const Reading first = reading({row(0, "7", "1")}, 0);
    const Reading second = reading({row(0, "3", "1")}, 1);
    EXPECT_EQ(table(second, &first), "InDatagrams  3  *\nNoPorts      1\n") << "the counter restarted";
    const Attribute* const name = findAttribute(2, "SystemName");
    const Reading before{{2, "QAV_System", OWB_DONE, {{0, {{name, {"old"}}}}}}, 0};
    const Reading after{{2, "QAV_System", OWB_DONE, {{0, {{name, {"new"}}}}}}, 1};
    EXPECT_EQ(sampleTable(sampleOf(2, {}, after, &before), 0), "SystemName  new  *\n");
}

TEST(Sample, MarksKeepSeveralRowsAligned) {
    const Reading first = reading({row(0, "5", "1"), row(1, "100", "1")}, 0);
    const Reading second = reading({row(0, "7", "1"), row(1, "100", "1")}, 1);
    EXPECT_EQ(table(second, &first), "Row  InDatagrams  NoPorts\n"
                                     "  0     7 +2.0/s        1\n"
                                     "  1   100               1\n");
}

TEST(Sample, ANewRowIsMarkedInAllColumns) {
    const Reading first = reading({row(0, "5", "1")}, 0);
    const Reading second = reading({row(0, "5", "1"), row(3, "1", "2")}, 1);
    EXPECT_EQ(table(second, &first), "Row  InDatagrams  NoPorts\n"
                                     "  0          5        1\n"
                                     "  3          1 *      2 *\n");
}

} // namespace
} // namespace owbctl
