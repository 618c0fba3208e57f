// Seconds since 1970 of CIM dates.
#include "owb.h"

#include "TraceLog.hpp"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

namespace {

long epochOf(std::string text) {
    return OWB_calcTimeEpoch(text.data());
}

struct Moment {
    const char* text;
    long seconds;
};

// Converts texts in a local time zone; expects no trace.
void expectMoments(const char* localTime, const std::vector<Moment>& examples) {
    TraceLog trace;
    trace.run([&] {
        ::setenv("TZ", localTime, 1);
        ::tzset();
        for (const Moment& example : examples)
            EXPECT_EQ(example.seconds, epochOf(example.text)) << example.text;
    });
    EXPECT_EQ(Lines{}, trace.lines());
}

const char farAway[] = "XYZ-5:30"; // irrelevant for a text with an offset

TEST(Epoch, OfADateCountsFrom1970To2038) {
    expectMoments(farAway, {{"19700101000000.000000+000", 0},
                            {"19700101000001.000000+000", 1},
                            {"19700101000000.999999+000", 0},
                            {"20000229120000.000000+000", 951825600},
                            {"20050102030405.678901+000", 1104635045},
                            {"20380119031407.000000+000", 2147483647},
                            {"20380119031407.999999+000", 2147483647}});
}

TEST(Epoch, OfADateSubtractsItsOffset) {
    expectMoments(farAway, {{"20050102030405.678901+060", 1104631445},
                            {"20050102030405.678901-300", 1104653045},
                            {"19700101000000.000000-001", 60},
                            {"19700102000000.000000+999", 26460},
                            {"19700101000000.000000-999", 59940},
                            {"20380119043407.000000+080", 2147483647},
                            {"20380119015407.000000-080", 2147483647},
                            {"20050102030405.678901+ 60", 1104631445},
                            {"20050102030405.678901+-60", 1104638645}});
}

TEST(Epoch, OfADateCountsAnAsteriskAsZero) {
    expectMoments(farAway,
                  {{"20050101******.******+***", 1104537600}, {"2005010103****.******+06*", 1104544800}});
}

TEST(Epoch, OfADateAcceptsTheDatesOfTheClientLibrary) {
    expectMoments(farAway, {{"00700101000000.000000+000", 0},
                            {"01050101000000.000000+000", 1104537600},
                            {"20050231000000.000000+000", 1109808000},
                            {"20050101235960.000000+000", 1104624000},
                            {"2005010203 405.678901+060", 1104631445},
                            {"200501020304+5.678901+060", 1104631445}});
}

TEST(Epoch, OfAnEnglishDateUsesItsZoneOrLocalTime) {
    const std::vector<Moment> zoned = {{"Thu Jan 1 00:00:00 UTC 1970", 0},
                                       {"Thu Jan 29 11:02:42 MST 2004", 1075399362},
                                       {"7 November 2003 13:35:03 GMT", 1068212103},
                                       {"5:41:26 PDT Aug 15 1984", 461421686}};
    expectMoments(farAway, zoned);
    expectMoments("UTC0", zoned);
    expectMoments("UTC0", {{"Wed Jun 30 21:49:08 1993", 741476948}, {"Jan 1 00:00 70", 0}});
    expectMoments(farAway, {{"Wed Jun 30 21:49:08 1993", 741457148}, {"Jan 1 05:30 70", 0}});
}

// Each text gives 0 and a trace with its message.
void expectFailures(const std::vector<std::pair<std::string, std::string>>& examples) {
    Lines expected;
    for (const auto& example : examples)
        expected.push_back(
            "../../owb/src/OWB_time.cpp:OWB_calcTimeEpoch:98: ERROR DateTimeException PLACE  " +
            example.second);
    TraceLog trace;
    trace.run([&] {
        for (const auto& example : examples)
            EXPECT_EQ(0, epochOf(example.first)) << example.first;
    });
    EXPECT_EQ(expected, withoutPlaces(trace.lines()));
}

TEST(Epoch, OfAnInvalidTextIsTracedAndZero) {
    const char* const examples[] = {"",
                                    " ",
                                    "hello",
                                    "00000001020304.500000:000",  // an interval
                                    "20050102030405.678901+00",   // too short
                                    "20050102030405.678901+1440", // too long
                                    "20050102030405.-00001+060",
                                    "2005010203040a.678901+060",
                                    "20051301000000.000000+000",
                                    "20050001000000.000000+000",
                                    "20050132000000.000000+000",
                                    "20050100000000.000000+000",
                                    "20050101240000.000000+000",
                                    "20050101236000.000000+000",
                                    "20050101235961.000000+000",
                                    "2005**********.******+***",
                                    "Jan 1 2005",
                                    "jan 1 00:00 2005",
                                    "Mon Tue Jan 1 00:00 2005",
                                    "Jan 32 1:2:3 2005"};
    std::vector<std::pair<std::string, std::string>> failures;
    for (const char* const example : examples)
        failures.emplace_back(example, std::string("Invalid DateTime: ") + example);
    expectFailures(failures);
}

TEST(Epoch, OfATimeOutsideTheRangeIsTracedAndZero) {
    const std::pair<const char*, const char*> examples[] = {
        {"20380119031408.000000+000", "Sun Jan 19 03:14:08 2038"},
        {"20380119031407.000000-001", "Sun Jan 19 03:15:07 2038"},
        {"19691231235959.000000+000", "Wed Dec 31 23:59:59 1969"},
        {"19700101000000.000000+001", "Wed Dec 31 23:59:00 1969"},
        {"00000101000000.000000+000", "Sun Jan  1 00:00:00 1900"}};
    std::vector<std::pair<std::string, std::string>> failures;
    for (const auto& [text, time] : examples)
        failures.emplace_back(text, std::string("Unable to represent time \"") + time + "\n\" as a time_t");
    expectFailures(failures);
}

TEST(Epoch, OfANullTextIsTracedUnderTheNameOfTheOtherFunctionAndZero) {
    TraceLog trace;
    trace.run([] { EXPECT_EQ(0, OWB_calcTimeEpoch(nullptr)); });
    EXPECT_EQ(Lines{"../../owb/src/OWB_time.cpp:OWB_calcTimeEpoch:92: ERROR - invalid char* string passed to "
                    "calcTimeInterval()"},
              trace.lines());
}

} // namespace
