// owbctl of this platform and of another print the same without an object manager: numbers have the same
// limits.
#include "support/Program.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using Arguments = std::vector<std::string>;

class OtherTool : public testing::TestWithParam<Arguments> {};

TEST_P(OtherTool, PrintsTheSame) {
    if (!std::filesystem::exists(OTHER_PROGRAMS "/owbctl"))
        GTEST_SKIP() << "no programs of another platform in " OTHER_PROGRAMS;
    const auto run = [](const std::string& programs) {
        Arguments command{programs + "/owbctl", "--url", "http://127.0.0.1:1"};
        command.insert(command.end(), GetParam().begin(), GetParam().end());
        return support::runProgram(command);
    };
    const support::ProgramResult ours = run(OUR_PROGRAMS);
    const support::ProgramResult others = run(OTHER_PROGRAMS);
    EXPECT_EQ(ours.out, others.out);
    EXPECT_EQ(ours.err, others.err);
    EXPECT_EQ(ours.exitCode, others.exitCode);
}

INSTANTIATE_TEST_SUITE_P(Dates, OtherTool,
                         testing::Values(Arguments{"time", "epoch", "20380119031407.000000+000"},
                                         Arguments{"time", "epoch", "20380119031408.000000+000"},
                                         Arguments{"time", "epoch", "21060207062816.000000+000"},
                                         Arguments{"time", "epoch", "19691231235959.000000+000"},
                                         Arguments{"time", "epoch", "Tue Jan 19 03:14:08 2038"},
                                         Arguments{"time", "epoch", "99991231235959.999999-720"}));
INSTANTIATE_TEST_SUITE_P(
    Intervals, OtherTool,
    testing::Values(Arguments{"time", "interval", "99999999235959.999999:000"},
                    Arguments{"time", "interval", "00024855031408.000000:000"},
                    Arguments{"time", "interval", "--unit", "us", "00000000003547.483648:000"},
                    Arguments{"time", "interval", "--unit", "us", "00000000000000.-00001:000"},
                    Arguments{"time", "interval", "--unit", "ms", "00000049170247.296000:000"}));
INSTANTIATE_TEST_SUITE_P(Numbers, OtherTool,
                         testing::Values(Arguments{"get", "4", "--row", "2147483647"},
                                         Arguments{"get", "4", "--row", "2147483648"},
                                         Arguments{"get", "4", "--row", "4294967296"},
                                         Arguments{"get", "4294967300"}, Arguments{"get", "0-4294967300"},
                                         Arguments{"get", "4", "--property", "4294967297"},
                                         Arguments{"watch", "4", "--count", "2147483648"},
                                         Arguments{"set", "2", "4294967296", "Name=x"},
                                         Arguments{"set", "2", "0", "4294967299=x"},
                                         Arguments{"--timeout", "4294967297", "get", "4"}));
