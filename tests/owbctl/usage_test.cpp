// The command line: help, version and wrong usage.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

void expectUsageError(const std::vector<std::string>& arguments) {
    const support::ProgramResult result = owbctl(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("owbctl: ", 0), 0u) << result.err;
    EXPECT_NE(result.err.find("\ntry 'owbctl --help'\n"), std::string::npos) << result.err;
}

TEST(Usage, ACommandIsNeeded) {
    expectUsageError({});
    expectUsageError({"--json"});
}

TEST(Usage, UnknownWordsAreRefused) {
    expectUsageError({"fetch"});
    expectUsageError({"--bogus"});
    expectUsageError({"groups", "4"});
    expectUsageError({"get", "4", "groups"});
}

TEST(Usage, GetNeedsAGroup) {
    expectUsageError({"get"});
}

TEST(Usage, AUrlNeedsItsText) {
    expectUsageError({"get", "4", "--url"});
    expectUsageError({"--url", "", "get", "4"});
    expectUsageError({"--url=", "get", "4"});
    expectUsageError({"get", "4", "--url", ""});
}

TEST(Usage, AGroupIsADecimalNumberUpTo30) {
    for (const char* const group :
         {"31", "-1", "+4", "4x", "x", "0x4", "4.0", "4,5", "", " 4", "18446744073709551620"}) {
        SCOPED_TRACE(group);
        expectUsageError({"get", "4", group});
    }
}

TEST(Usage, HelpGoesToStandardOutputAndListsTheExitStatuses) {
    const support::ProgramResult result = owbctl({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    for (const char* const text : {"groups", "get", "instance", "set", "time", "--url", "--json", "\n  12  ",
                                   "\n  13  ", "\n  14  ", "\n  15  "})
        EXPECT_NE(result.out.find(text), std::string::npos) << text;
}

TEST(Usage, ACommandHasItsOwnHelp) {
    const support::ProgramResult result = owbctl({"get", "--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("GROUP"), std::string::npos);
}

TEST(Usage, VersionIsTheLibrarysAndGoesToStandardOutput) {
    const support::ProgramResult result = owbctl({"--version"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "owbctl v1.12\n");
}

TEST(Usage, AMessageShowsControlCharactersEscaped) {
    const support::ProgramResult result = owbctl({"get", "\x1b[31m"});
    EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
    EXPECT_NE(result.err.find("\\x1b[31m"), std::string::npos);
}

} // namespace
} // namespace owbctl_test
