// `owbctl time`.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

void expectUsageError(const std::vector<std::string>& arguments, const std::string& why) {
    const support::ProgramResult result = owbctl(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: " + why + "\ntry 'owbctl --help'\n");
}

TEST(Time, TheSecondsToADateArePrinted) {
    const support::ProgramResult result = owbctl({"time", "epoch", "19700102000001.000000+000"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "86401\n");
    EXPECT_EQ(result.err, "");
}

TEST(Time, ATextThatIsNoDateGivesStatus1AndNoNumber) {
    const support::ProgramResult result = owbctl({"time", "epoch", "gar\nbage"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: 'gar\\nbage': no date from 1970 to 2038-01-19 03:14:07 UTC\n");
}

TEST(Time, TheLengthOfAnIntervalIsPrintedInSeconds) {
    const support::ProgramResult result = owbctl({"time", "interval", "00000001000001.900000:000"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "86401\n");
    EXPECT_EQ(result.err, "");
}

TEST(Time, TheLengthOfAnIntervalIsPrintedInTheGivenUnit) {
    EXPECT_EQ(owbctl({"time", "interval", "--unit", "cs", "00000000000001.234567:000"}).out, "123\n");
    EXPECT_EQ(owbctl({"time", "interval", "00000000000001.234567:000", "--unit", "ms"}).out, "1235\n");
    EXPECT_EQ(owbctl({"time", "interval", "00000000000001.234567:000", "--unit=us"}).out, "1234567\n");
    EXPECT_EQ(owbctl({"time", "interval", "00000000000001.234567:000", "--unit=s"}).out, "1\n");
}

TEST(Time, ANumberThatWrapsGivesStatus1AndNoNumber) {
    const support::ProgramResult result =
        owbctl({"time", "interval", "00000000003548.000000:000", "--unit", "us"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: '00000000003548.000000:000': too long for 32 bits in us: the library's "
                          "number wraps to -2146967296\n");
}

TEST(Time, ATextThatIsNoIntervalGivesStatus1AndNoNumber) {
    const support::ProgramResult result = owbctl({"time", "interval", "garbage"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "owbctl: 'garbage': no interval of the form ddddddddhhmmss.mmmmmm:000\n");
}

TEST(Time, TheJsonDocumentHoldsTextUnitAndValue) {
    const support::ProgramResult result =
        owbctl({"time", "interval", "00000000000000.000000:000", "--unit", "ms", "-ojson"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, R"({
  "format_version": 1,
  "text": "00000000000000.000000:000",
  "unit": "ms",
  "value": 0,
  "error": null
}
)");
}

TEST(Time, AFailureAppearsInTheJsonDocument) {
    const support::ProgramResult result = owbctl({"-ojson", "time", "epoch", ""});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: '': no date from 1970 to 2038-01-19 03:14:07 UTC\n");
    EXPECT_EQ(result.out, R"({
  "format_version": 1,
  "text": "",
  "unit": "s",
  "value": null,
  "error": "no date from 1970 to 2038-01-19 03:14:07 UTC"
}
)");
}

TEST(Time, AConversionIsRequired) {
    expectUsageError({"time"}, "time: epoch or interval is required");
    expectUsageError({"time", "length"}, "unknown command 'length'");
    expectUsageError({"time", "epoch", "x", "interval", "y"}, "unexpected argument 'interval'");
}

TEST(Time, AConversionRequiresItsText) {
    expectUsageError({"time", "epoch"}, "TEXT is required");
    expectUsageError({"time", "interval"}, "TEXT is required");
}

TEST(Time, AnUnknownUnitIsRejected) {
    expectUsageError({"time", "interval", "00000000000001.234567:000", "--unit", "min"},
                     "--unit: 'min' is none of s, cs, ms, us");
}

} // namespace
} // namespace owbctl_test
