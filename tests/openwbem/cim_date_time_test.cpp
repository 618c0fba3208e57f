#include "OW_CIMDateTime.hpp"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace {

using OpenWBEM::CIMDateTime;
using OpenWBEM::CIMDateTimeException;
using OpenWBEM::String;
using OpenWBEM::UInt64;

struct Example {
    const char* input;
    bool isInterval;
    const char* output;
};

std::ostream& operator<<(std::ostream& out, const Example& example) {
    return out << '"' << example.input << '"';
}

class CIMDateTimeText : public testing::TestWithParam<Example> {};

TEST_P(CIMDateTimeText, IsParsedFieldByField) {
    const CIMDateTime time{String(GetParam().input)};
    EXPECT_EQ(GetParam().isInterval, time.isInterval());
    EXPECT_STREQ(GetParam().output, time.toString().c_str());
}

INSTANTIATE_TEST_SUITE_P(
    Examples, CIMDateTimeText,
    testing::Values(Example{"", true, "00000000000000.000000:000"},
                    Example{"20050102030405.678901+060", false, "20050102030405.678901+060"},
                    Example{"20050102030405.678901-300", false, "20050102030405.678901-300"},
                    Example{"00000001020304.500000:000", true, "00000001020304.500000:000"},
                    Example{"12345678235959.999999:000", true, "12345678235959.999999:000"},
                    Example{"20050102030405.678901+000", false, "20050102030405.678901+000"},
                    Example{"00000001023456.500000:123", true, "00000001023456.500000:000"},
                    Example{"99999999999999.999999:999", true, "99999999999999.999999:000"},
                    Example{"********020304.******:000", true, "00000000020304.000000:000"},
                    Example{"2005**********.******+***", false, "20050000000000.000000+000"},
                    Example{"00000000000001.1*****:000", true, "00000000000001.000001:000"},
                    Example{"00000000000001.-00005:000", true, "00000000000001.4294967291:000"},
                    Example{"-0000001-1-1-1.000000:000", true, "4294967295255255255.000000:000"},
                    Example{"00000001020304.500000:", true, "00000001020304.500000:000"},
                    Example{"00000001020304x500000:000", true, "00000001020304.500000:000"},
                    Example{"abcdefghijklmn.opqrst:uvw", true, "00000000000000.000000:000"},
                    Example{"20050102030405.678901+0600000", false, "20050102030405.678901+10176"},
                    Example{"20050102030405.678901+06", false, "20050102030405.678901+006"},
                    Example{"20050102030405.678901+", false, "20050102030405.678901+000"},
                    Example{"20050102030405,678901-720", false, "20050102030405.678901-720"},
                    Example{"        020304.500000:000", true, "00000000020304.500000:000"},
                    Example{"00000001020304.500000:000trailing garbage text here that is long", true,
                            "00000001020304.500000:000"},
                    Example{" 0000001020304.500000:000", true, "00000001020304.500000:000"},
                    Example{"+0000001020304.500000:000", true, "00000001020304.500000:000"},
                    Example{"20051332256199.678901+1440", false, "20051332256199.678901+1440"}));

class InvalidCIMDateTimeText : public testing::TestWithParam<const char*> {};

TEST_P(InvalidCIMDateTimeText, Throws) {
    try {
        CIMDateTime{String(GetParam())};
        FAIL() << "no exception";
    } catch (const CIMDateTimeException& e) {
        EXPECT_STREQ("Invalid format for date time", e.getMessage());
        EXPECT_STREQ("CIMDateTimeException", e.type());
        EXPECT_EQ(0, e.getErrorCode());
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, InvalidCIMDateTimeText,
                         testing::Values("20050102030405.678901", "00000001020304.500000", "hello",
                                         "20050102030405.678901 060", "4294967296",
                                         "00000001020304.5000000:000"));

TEST(CIMDateTime, OfMicrosecondsIsAnInterval) {
    const std::pair<UInt64, const char*> examples[] = {
        {1, "00000000000000.000001:000"},
        {999999, "00000000000000.999999:000"},
        {1000000, "00000000000001.000000:000"},
        {60000000, "00000000000100.000000:000"},
        {4294967296ULL, "00000000011134.967296:000"},
        {86399999999ULL, "00000000235959.999999:000"},
        {93784500000ULL, "00000001020304.500000:000"},
        {4294967295999999ULL, "00049710062815.999999:000"},
        {4294967296000000ULL, "00000000000000.000000:000"},
        {4294967297500000ULL, "00000000000001.500000:000"},
        {18446744073709551615ULL, "00048084130445.551615:000"},
    };
    for (const auto& [microSeconds, text] : examples)
        EXPECT_STREQ(text, CIMDateTime(microSeconds).toString().c_str());
}

TEST(CIMDateTime, IsFalseIfAllFieldsButTheOffsetAreZero) {
    EXPECT_FALSE(CIMDateTime());
    EXPECT_FALSE(CIMDateTime(OpenWBEM::CIMNULL));
    EXPECT_FALSE(CIMDateTime(String("00000000000000.000000+060")));
    EXPECT_TRUE(CIMDateTime(UInt64(1)));
}

} // namespace
