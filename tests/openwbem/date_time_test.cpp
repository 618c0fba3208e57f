#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <ostream>
#include <sstream>
#include <string>

namespace {

using OpenWBEM::CIMDateTime;
using OpenWBEM::DateTime;
using OpenWBEM::DateTimeException;
using OpenWBEM::String;

/** Sets the local time zone during its lifetime (tzset(3)). */
class TimeZone {
public:
    explicit TimeZone(const char* zone) {
        if (const char* before = std::getenv("TZ"))
            m_before = before;
        else
            m_wasSet = false;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~TimeZone() {
        if (m_wasSet)
            setenv("TZ", m_before.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

private:
    std::string m_before;
    bool m_wasSet = true;
};

const char* const centralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

struct Example {
    const char* text;
    time_t seconds;
};
std::ostream& operator<<(std::ostream& out, const Example& example) {
    return out << '"' << example.text << '"';
}

class EpochOfADate : public testing::TestWithParam<Example> {};

TEST_P(EpochOfADate, IsTheSecondsSince1970) {
    const TimeZone utc("UTC");
    EXPECT_EQ(GetParam().seconds, DateTime(String(GetParam().text)).get());
}

INSTANTIATE_TEST_SUITE_P(
    CIM, EpochOfADate,
    testing::Values(
        Example{"19700101000000.000000+000", 0}, Example{"20050102030405.678901+060", 1104631445},
        Example{"20050102030405.678901-300", 1104653045}, Example{"20380119031407.000000+000", 2147483647},
        Example{"19700101000000.000000-001", 60}, Example{"00700101000000.000000+000", 0},
        Example{"01050101000000.000000+000", 1104537600}, Example{"20050231000000.000000+000", 1109808000},
        Example{"20050101235960.000000+000", 1104624000}, Example{"20050101******.******+***", 1104537600},
        Example{"20050102030405.678901+ 60", 1104631445}, Example{"20050102030405.678901+-60", 1104638645},
        Example{"2005010203 405.678901+060", 1104631445}, Example{"200501020304+5.678901+060", 1104631445}));

INSTANTIATE_TEST_SUITE_P(English, EpochOfADate,
                         testing::Values(Example{"Wed Jun 30 21:49:08 1993", 741476948},
                                         Example{"Thu Jan 29 11:02:42 MST 2004", 1075399362},
                                         Example{"Oct 3 17:52:56 EDT 1998", 907451576},
                                         Example{"5:41:26 PDT Aug 15 1984", 461421686},
                                         Example{"7 November 2003 13:35:03 GMT", 1068212103},
                                         Example{"Monday May 1 8:27:39 UTC 2003", 1051777659},
                                         Example{"June 1 23:49 2003", 1054511340},
                                         Example{"Jan 1 00:00 70", 0},
                                         Example{"Dec 31 23:30 EST 2004", 1104553800},
                                         Example{"\tJan\n1\r12:00\v2005 ", 1104580800}));

// Hours east of UTC of every named zone.
struct NamedZone {
    const char* name;
    int hours;
};
TEST(Epoch, KnowsTheTimeZonesByName) {
    const NamedZone zones[] = {
        {"UTC", 0},   {"GMT", 0},  {"WET", 0},   {"Z", 0},    {"BST", 1},  {"IST", 1},   {"WEST", 1},
        {"CET", 1},   {"A", 1},    {"CEST", 2},  {"EET", 2},  {"B", 2},    {"EEST", 3},  {"MSK", 3},
        {"C", 3},     {"MSD", 4},  {"D", 4},     {"E", 5},    {"F", 6},    {"G", 7},     {"WST", 8},
        {"H", 8},     {"I", 9},    {"K", 10},    {"L", 11},   {"M", 12},   {"N", -1},    {"O", -2},
        {"ADT", -3},  {"P", -3},   {"AST", -4},  {"EDT", -4}, {"Q", -4},   {"EST", -5},  {"ET", -5},
        {"CDT", -5},  {"R", -5},   {"CST", -6},  {"CT", -6},  {"MDT", -6}, {"S", -6},    {"MST", -7},
        {"MT", -7},   {"PDT", -7}, {"T", -7},    {"PST", -8}, {"PT", -8},  {"AKDT", -8}, {"U", -8},
        {"AKST", -9}, {"V", -9},   {"HST", -10}, {"W", -10},  {"X", -11},  {"Y", -12}};
    for (const NamedZone& zone : zones)
        EXPECT_EQ(1104667200 - zone.hours * 3600, DateTime("Jan 2 12:00 2005 " + String(zone.name)).get())
            << zone.name;
}

class InvalidDateText : public testing::TestWithParam<const char*> {};

TEST_P(InvalidDateText, IsInvalid) {
    try {
        DateTime{String(GetParam())};
        FAIL() << "no exception";
    } catch (const DateTimeException& e) {
        EXPECT_EQ("Invalid DateTime: " + std::string(GetParam()), e.getMessage());
        EXPECT_STREQ("DateTimeException", e.type());
        EXPECT_EQ(17, e.getSubClassId());
        EXPECT_EQ(-1, e.getErrorCode());
    }
}

INSTANTIATE_TEST_SUITE_P(CIM, InvalidDateText,
                         testing::Values("20051301000000.000000+000", "20050101240000.000000+000",
                                         "20050101235961.000000+000", "2005**********.******+***",
                                         "20050102030405.-00001+060", "2005010203040a.678901+060",
                                         "00000001020304.500000:000", "20050102030405.678901+0600",
                                         "20050102030405.678901+06", ""));

INSTANTIATE_TEST_SUITE_P(
    English, InvalidDateText,
    testing::Values("Jan 1 2005", "jan 1 00:00 2005", "Mondayy Jan 1 00:00 2005", "Mon Tue Jan 1 00:00 2005",
                    "Jan 32 1:2:3 2005", "Jan 1 00:30 CET 2005", "hello", "Sept 1 00:00 2005",
                    "Jan Feb 1 00:00 2005", "Jan 1 00:00 2005 3", "Jan 1 00:00 UTC GMT 2005",
                    "Jan 1 12 00: 2005", "Jan 1 1:2:3:4 2005", "Jan 1 1: 2005", "Jan 1 :2 2005",
                    "Jan 1st 00:00 2005", "Jan 1 00:00 99999999999999999999", "Jan 1 24:00 2005",
                    "Jan 1 00:60 2005", "Jan 0 00:00 2005", "Jan 1 00:00 -2005", "   "));

struct Unrepresentable {
    const char* text;
    const char* asctime;
};
std::ostream& operator<<(std::ostream& out, const Unrepresentable& example) {
    return out << '"' << example.text << '"';
}

class DateOutOfRange : public testing::TestWithParam<Unrepresentable> {};

TEST_P(DateOutOfRange, IsUnrepresentable) {
    const TimeZone utc("UTC");
    try {
        DateTime{String(GetParam().text)};
        FAIL() << "no exception";
    } catch (const DateTimeException& e) {
        EXPECT_EQ("Unable to represent time \"" + std::string(GetParam().asctime) + "\" as a time_t",
                  e.getMessage());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Examples, DateOutOfRange,
    testing::Values(Unrepresentable{"20380119031408.000000+000", "Sun Jan 19 03:14:08 2038\n"},
                    Unrepresentable{"21060207062815.000000+000", "Sun Feb  7 06:28:15 2106\n"},
                    Unrepresentable{"99991231235959.999999+000", "Sun Dec 31 23:59:59 9999\n"},
                    Unrepresentable{"Jan 20 12:00 2038", "Sun Jan 20 12:00:00 2038\n"},
                    Unrepresentable{"19011213204551.000000+000", "Sun Dec 13 20:45:51 1901\n"},
                    Unrepresentable{"19011213204552.000000+000", "Fri Dec 13 20:45:52 1901\n"},
                    Unrepresentable{"19691231235959.000000+000", "Wed Dec 31 23:59:59 1969\n"},
                    Unrepresentable{"19700101000000.000000+001", "Wed Dec 31 23:59:00 1969\n"},
                    Unrepresentable{"19000101000000.000000+000", "Sun Jan  1 00:00:00 1900\n"},
                    Unrepresentable{"00000101000000.000000+000", "Sun Jan  1 00:00:00 1900\n"},
                    Unrepresentable{"Jan 1 12:00 UTC 1960", "Fri Jan  1 12:00:00 1960\n"},
                    Unrepresentable{"1 2 Jan 00:00", "Wed Jan  1 00:00:00 1902\n"}));

TEST(Epoch, OfALocalTimeDependsOnTheTimeZone) {
    const TimeZone local(centralEurope);
    EXPECT_EQ(1104577200, DateTime("Jan 1 12:00 2005").get());
    EXPECT_EQ(1104577200, DateTime("Jan 1 12:00 J 2005").get());
    EXPECT_EQ(1120212000, DateTime("Jul 1 12:00 2005").get()) << "in summer";
    EXPECT_EQ(1104580800, DateTime("Jan 1 12:00 UTC 2005").get());
}

TEST(DateTime, IsTheEpochByDefault) {
    EXPECT_EQ(0, DateTime().get());
    EXPECT_EQ(0U, DateTime().getMicrosecond());
}

TEST(DateTime, KeepsTheMicrosecondsOfADate) {
    EXPECT_EQ(678901U, DateTime("20050102030405.678901+060").getMicrosecond());
}

TEST(DateTime, ReturnsItsFieldsInUTCAndLocally) {
    const TimeZone local(centralEurope);
    const DateTime time(1104532205, 7); // 2004-12-31 22:30:05 UTC, a Friday
    EXPECT_EQ(2004, time.getYear(DateTime::E_UTC_TIME));
    EXPECT_EQ(12, time.getMonth(DateTime::E_UTC_TIME));
    EXPECT_EQ(31, time.getDay(DateTime::E_UTC_TIME));
    EXPECT_EQ(5, time.getDow(DateTime::E_UTC_TIME));
    EXPECT_EQ(22, time.getHour(DateTime::E_UTC_TIME));
    EXPECT_EQ(23, time.getHour());
    EXPECT_EQ(30, time.getMinute());
    EXPECT_EQ(5, time.getSecond());
}

TEST(DateTime, IsCreatedFromFields) {
    const TimeZone local(centralEurope);
    EXPECT_EQ(1104573600, DateTime(2005, 1, 1, 11).get());
    EXPECT_EQ(1104577200, DateTime(2005, 1, 1, 11, 0, 0, 5, DateTime::E_UTC_TIME).get());
    EXPECT_THROW(DateTime(2005, 13, 1), DateTimeException);
    EXPECT_THROW(DateTime(70, 1, 1), DateTimeException) << "a year is not short here";
}

TEST(DateTime, AddsUnitsInUTC) {
    DateTime time(1104532205);
    EXPECT_EQ(1104532205 + 5, (time += 5).get());
    EXPECT_EQ(1104532205, (time -= 5).get());
    EXPECT_EQ(1104532205 + 86400, time.addDays(1).get());
    EXPECT_EQ(1104532205 + 86400 + 3660, time.addHours(1).addMinutes(1).get());
    EXPECT_EQ(2006, time.addYears(1).getYear(DateTime::E_UTC_TIME));
    EXPECT_EQ(11, time.addMonths(-2).getMonth(DateTime::E_UTC_TIME));
    EXPECT_EQ(8, time.addWeeks(1).getDay(DateTime::E_UTC_TIME));
}

TEST(DateTime, ThrowsOutsideItsRange) {
    DateTime time(5);
    EXPECT_THROW(time.addYears(100), DateTimeException);
    EXPECT_THROW(time.addSeconds(-6), DateTimeException);
    EXPECT_THROW(time.addWeeks(2147483647), DateTimeException);
    EXPECT_EQ(5, time.get());
}

TEST(DateTime, EndsIn2038ForAnyWidthOfTimeT) {
    DateTime last(2147483647);
    EXPECT_EQ(2147483647, last.get());
    EXPECT_THROW(last += 1, DateTimeException);
    EXPECT_EQ(2038, last.getYear(DateTime::E_UTC_TIME));
    if (sizeof(time_t) > sizeof(OpenWBEM::Int32)) {
        EXPECT_THROW(DateTime(static_cast<time_t>(OpenWBEM::Int64{1} << 31)), DateTimeException);
        EXPECT_THROW(DateTime(static_cast<time_t>(OpenWBEM::Int64{1} << 32)), DateTimeException);
    }
}

TEST(DateTime, HasTheSameSizeForAnyWidthOfTimeT) {
    EXPECT_EQ(8U, sizeof(DateTime));
}

TEST(DateTime, ComparesByTheInstant) {
    EXPECT_TRUE(DateTime(1) < DateTime(2) && DateTime(1, 1) < DateTime(1, 2) && DateTime(1) <= DateTime(1));
    EXPECT_TRUE(DateTime(2) > DateTime(1) && DateTime(2) >= DateTime(1));
    EXPECT_TRUE(DateTime(1, 1) == DateTime(1, 1) && DateTime(1, 1) != DateTime(1, 2));
}

TEST(DateTime, IsFormattedLikeAsctimeAndStrftime) {
    const DateTime time(1104532205);
    EXPECT_EQ("Fri Dec 31 22:30:05 2004\n", time.toString(DateTime::E_UTC_TIME));
    EXPECT_EQ("2004-12-31", time.toString("%Y-%m-%d", DateTime::E_UTC_TIME));
    EXPECT_EQ("", time.toString("", DateTime::E_UTC_TIME));
    std::string form;
    std::string text;
    for (int i = 0; i < 100; ++i) {
        form += "%A";
        text += "Friday";
    }
    EXPECT_EQ(text, time.toString(form.c_str(), DateTime::E_UTC_TIME).c_str()) << "longer than its form";
}

TEST(DateTime, SetToCurrentIsNotEarlierThanTheTimeBefore) {
    const time_t before = std::time(nullptr);
    DateTime time;
    time.setToCurrent();
    EXPECT_GE(time.get(), before);
}

TEST(CIMDateTimeOfAnInstant, IsADateInLocalTime) {
    const TimeZone local(centralEurope);
    const CIMDateTime winter = DateTime(1104577200, 5);
    EXPECT_EQ("20050101120000.000005+060", winter.toString());
    EXPECT_EQ("20050701120000.000000+120", CIMDateTime(DateTime(1120212000)).toString());
    EXPECT_TRUE(winter.toDateTime() == DateTime(1104577200, 5));
}

TEST(CIMDateTimeOrder, IsTheOrderOfTheInstants) {
    const CIMDateTime noon(String("20050101120000.000000+060"));
    const CIMDateTime later(String("20050101113000.000000+000"));
    EXPECT_TRUE(noon < later && noon <= later && later > noon && later >= noon);
    EXPECT_THROW(static_cast<void>(CIMDateTime() < noon), DateTimeException) << "an interval has no instant";
}

TEST(CIMDateTimeStream, GetsTheText) {
    std::ostringstream out;
    out << CIMDateTime(OpenWBEM::UInt64(1));
    EXPECT_EQ("00000000000000.000001:000", out.str());
}

} // namespace
