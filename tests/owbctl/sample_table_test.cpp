// Tables of samples: marks of changed values.
#include "agent/Sample.hpp"
#include "formats/GroupTable.hpp"

#include "Screens.hpp"

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

Row port(long number, const std::string& name, const std::string& octets, const std::string& errors) {
    return {number,
            {{findAttribute(10, "InstanceID"), {name}},
             {findAttribute(10, "InOctets"), {octets}},
             {findAttribute(10, "InUcastPkts"), {octets}},
             {findAttribute(10, "InErrors"), {errors}},
             {findAttribute(10, "OutOctets"), {octets}},
             {findAttribute(10, "OutUcastPkts"), {octets}},
             {findAttribute(10, "OutQLen"), {errors}}}};
}

Reading ports(std::vector<Row> rows, double moment) {
    return {{10, "QAV_NetworkPortStatistics", OWB_DONE, std::move(rows)}, moment};
}

TEST(Sample, RatesFitTheTerminal) {
    const Reading before = ports({port(0, "lo", "948123", "0"), port(1, "eth0", "98214477123", "3"),
                                  port(2, "br-2f1c77d0a9e4", "0", "0")},
                                 0);
    const Reading now = ports({port(0, "lo", "948128", "0"), port(1, "eth0", "98339477123", "4"),
                               port(2, "br-2f1c77d0a9e4", "0", "0")},
                              2);
    owbctl_test::expectScreen("watch-10-rates.80", table(now, &before, 80));
    owbctl_test::expectScreen("watch-10-rates.140", table(now, &before, 140));
}

TEST(Sample, OneChangedRowOfSeveralKeepsItsNumber) {
    const Reading before = ports({port(0, "lo", "1", "0"), port(1, "eth0", "1", "0")}, 0);
    Sample sample = sampleOf(2, {}, ports({port(0, "lo", "1", "0"), port(1, "eth0", "1", "2")}, 2), &before);
    keepChanges(sample);
    EXPECT_EQ(sampleTable(sample, 0), "InstanceID  Row  InErrors  OutQLen\n"
                                      "eth0          1  2 +1.0/s      2 *\n");
}

} // namespace
} // namespace owbctl
