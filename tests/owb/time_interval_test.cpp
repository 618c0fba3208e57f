// Lengths of CIM intervals.
#include "owb.h"

#include "TraceLog.hpp"

#include <climits>
#include <gtest/gtest.h>
#include <string>

extern "C" long intervalInAnyUnit(char* text, int unit); // any_unit.c

namespace {

long lengthOf(std::string text, OWB_TIME_UNIT unit) {
    return OWB_calcTimeInterval(text.data(), unit);
}

struct Length {
    const char* text;
    long seconds;
    long hundredths;
    long milliseconds;
    long microseconds;
};

// Converts texts to each unit; expects no trace.
void expectLengths(const std::vector<Length>& examples) {
    TraceLog trace;
    trace.run([&] {
        for (const Length& example : examples) {
            EXPECT_EQ(example.seconds, lengthOf(example.text, OWB_TIME_SECONDS)) << example.text;
            EXPECT_EQ(example.hundredths, lengthOf(example.text, OWB_TIME_HUNDREDTHS)) << example.text;
            EXPECT_EQ(example.milliseconds, lengthOf(example.text, OWB_TIME_MILLISECONDS)) << example.text;
            EXPECT_EQ(example.microseconds, lengthOf(example.text, OWB_TIME_MICROSECONDS)) << example.text;
        }
    });
    EXPECT_EQ(Lines{}, trace.lines());
}

TEST(Interval, IsCountedInEachUnit) {
    expectLengths({{"00000000000000.000000:000", 0, 0, 0, 0},
                   {"00000000000001.000000:000", 1, 100, 1000, 1000000},
                   {"00000000000100.000000:000", 60, 6000, 60000, 60000000},
                   {"00000000001259.000001:000", 779, 77900, 779000, 779000001},
                   {"00000000010000.000000:000", 3600, 360000, 3600000, -694967296},
                   {"00000001000000.000000:000", 86400, 8640000, 86400000, 500654080},
                   {"00000001020304.500000:000", 93784, 9378450, 93784500, -704780512}});
}

TEST(Interval, DropsFractionsOfASecondAndRoundsHalvesOfFinerUnitsAwayFromZero) {
    expectLengths({{"00000000000000.000499:000", 0, 0, 0, 499},
                   {"00000000000000.000500:000", 0, 0, 1, 500},
                   {"00000000000000.000501:000", 0, 0, 1, 501},
                   {"00000000000000.001499:000", 0, 0, 1, 1499},
                   {"00000000000000.002500:000", 0, 0, 3, 2500},
                   {"00000000000000.004999:000", 0, 0, 5, 4999},
                   {"00000000000000.005000:000", 0, 1, 5, 5000},
                   {"00000000000000.014999:000", 0, 1, 15, 14999},
                   {"00000000000000.025000:000", 0, 3, 25, 25000},
                   {"00000000000000.999999:000", 0, 100, 1000, 999999},
                   {"00000000000007.999999:000", 7, 800, 8000, 7999999}});
}

TEST(Interval, WrapsMicrosecondsBeyond32Bits) {
    expectLengths({{"00000000003547.483647:000", 2147, 214748, 2147484, 2147483647},
                   {"00000000003547.483648:000", 2147, 214748, 2147484, -2147483647 - 1},
                   {"00000000011134.967295:000", 4294, 429497, 4294967, -1},
                   {"00000000011134.967296:000", 4294, 429497, 4294967, 0}});
}

TEST(Interval, WrapsMillisecondsBeyond32Bits) {
    expectLengths({{"00000024203123.647000:000", 2147483, 214748365, 2147483647, -1000},
                   {"00000024203123.647499:000", 2147483, 214748365, 2147483647, -501},
                   {"00000024203123.647500:000", 2147483, 214748365, -2147483647 - 1, -500},
                   {"00000024203123.648000:000", 2147483, 214748365, -2147483647 - 1, 0}});
}

TEST(Interval, WrapsHundredthsBeyond32Bits) {
    expectLengths({{"00000248131356.470000:000", 21474836, 2147483647, -10, -10000},
                   {"00000248131356.474999:000", 21474836, 2147483647, -5, -5001},
                   {"00000248131356.475000:000", 21474836, -2147483647 - 1, -5, -5000},
                   {"00000248131356.480000:000", 21474836, -2147483647 - 1, 0, 0}});
}

TEST(Interval, WrapsSecondsBeyond32Bits) {
    expectLengths({{"00024855031407.999999:000", 2147483647, 0, 0, -1},
                   {"00024855031408.000000:000", -2147483647 - 1, 0, 0, 0},
                   {"00049710062815.000000:000", -1, -100, -1000, -1000000},
                   {"00049710062816.000000:000", 0, 0, 0, 0},
                   {"99999999235959.999999:000", -1474199553, -1391067136, -1025769472, 727711743}});
}

TEST(Interval, DoesNotValidateItsFields) {
    expectLengths({{"00000001999999.999999:000", 448839, 44884000, 448840000, -2131566081},
                   {"-0000001-1-1-1.000000:000", 847155, 84715500, 847155000, 1046442688},
                   {"00000000000000.-00001:000", 0, 429497, 4294967, -1},
                   {"00000000000001.-00001:000", 1, 429597, 4295967, 999999},
                   {"        020304.500000:000", 7384, 738450, 7384500, -1205434592},
                   {"                     :   ", 0, 0, 0, 0},
                   {"********020304.******:000", 7384, 738400, 7384000, -1205934592},
                   {"00000000000001.1*****:000", 1, 100, 1000, 1000001},
                   {"+0000001020304.500000:000", 93784, 9378450, 93784500, -704780512},
                   {" 0000001020304.500000:000", 93784, 9378450, 93784500, -704780512},
                   {"abcdefghijklmn.opqrst:uvw", 0, 0, 0, 0}});
}

TEST(Interval, EndsAfterItsMicroseconds) {
    expectLengths({{"00000001020304.500000:", 93784, 9378450, 93784500, -704780512},
                   {"00000001020304x500000:999", 93784, 9378450, 93784500, -704780512},
                   {"00000001020304.500000:000 and more", 93784, 9378450, 93784500, -704780512}});
}

TEST(Interval, OfADateCountsTheDayOfTheMonthAsDays) {
    expectLengths({{"20050102030405.678901+060", 183845, 18384568, 183845679, -837914827},
                   {"20050102030405.678901-300", 183845, 18384568, 183845679, -837914827},
                   {"19991231235959.999999+000", 2764799, 276480000, -1530167296, -1158938625}});
}

TEST(Interval, OfTheEmptyTextIsZero) {
    expectLengths({{"", 0, 0, 0, 0}});
}

TEST(Interval, OfAnInvalidTextIsTracedAndZero) {
    const char* const examples[] = {"hello",
                                    "20050102030405.678901",
                                    "00000001020304.500000",
                                    "20050102030405.678901 060",
                                    "00000001020304.5000000:000",
                                    " "};
    TraceLog trace;
    trace.run([&] {
        for (const char* const example : examples)
            EXPECT_EQ(0, lengthOf(example, OWB_TIME_MICROSECONDS)) << example;
    });
    EXPECT_EQ(
        Lines(std::size(examples),
              "../../owb/src/OWB_time.cpp:OWB_calcTimeInterval:194: \n>>ERROR CIMDateTimeException PLACE  "
              "Invalid format for date time"),
        withoutPlaces(trace.lines()));
}

const char rejected[] = "188: ERROR - bad char* string or bad time unit passed to OWB_calcTimeInterval()";

TEST(Interval, InAnInvalidUnitIsTracedAndZero) {
    const int units[] = {0, -1, 5, 6, 260, INT_MIN, INT_MAX};
    TraceLog trace;
    trace.run([&] {
        char text[] = "00000000000001.000000:000";
        for (const int unit : units)
            EXPECT_EQ(0, intervalInAnyUnit(text, unit)) << unit;
        EXPECT_EQ(1, intervalInAnyUnit(text, 1));
        EXPECT_EQ(1000000, intervalInAnyUnit(text, 4));
    });
    EXPECT_EQ(Lines(std::size(units), rejected), trace.linesOf("OWB_calcTimeInterval"));
    EXPECT_EQ(std::string("../../owb/src/OWB_time.cpp:OWB_calcTimeInterval:") + rejected,
              trace.lines().at(0));
}

TEST(Interval, OfANullTextIsTracedAndZero) {
    TraceLog trace;
    trace.run([] {
        for (const OWB_TIME_UNIT unit :
             {OWB_TIME_SECONDS, OWB_TIME_HUNDREDTHS, OWB_TIME_MILLISECONDS, OWB_TIME_MICROSECONDS})
            EXPECT_EQ(0, OWB_calcTimeInterval(nullptr, unit));
        EXPECT_EQ(0, intervalInAnyUnit(nullptr, 0));
    });
    EXPECT_EQ(Lines(5, rejected), trace.linesOf("OWB_calcTimeInterval"));
}

TEST(Interval, OfAnInvalidTextInAnInvalidUnitReportsOnlyTheUnit) {
    TraceLog trace;
    trace.run([] {
        char text[] = "hello";
        EXPECT_EQ(0, intervalInAnyUnit(text, 5));
    });
    EXPECT_EQ(Lines{rejected}, trace.linesOf("OWB_calcTimeInterval"));
}

} // namespace
