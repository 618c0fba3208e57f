// The command line: help, version and usage errors.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace owbctl_test {
namespace {

void expectUsageError(const std::vector<std::string>& arguments) {
    const support::ProgramResult result = owbctl(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("owbctl: ", 0), 0u) << result.err;
    EXPECT_NE(result.err.find("\ntry 'owbctl --help'\n"), std::string::npos) << result.err;
}

TEST(Usage, ACommandIsRequired) {
    expectUsageError({});
    expectUsageError({"-o", "csv"});
}

TEST(Usage, UnknownArgumentsAreRejected) {
    expectUsageError({"fetch"});
    expectUsageError({"--bogus"});
    expectUsageError({"groups", "4", "nothing"});
    expectUsageError({"get", "4", "groups"});
}

TEST(Usage, GetRequiresAGroup) {
    expectUsageError({"get"});
}

TEST(Usage, AUrlMayNotBeEmpty) {
    expectUsageError({"get", "4", "--url"});
    expectUsageError({"--url", "", "get", "4"});
    expectUsageError({"--url=", "get", "4"});
    expectUsageError({"get", "4", "--url", ""});
}

TEST(Usage, AGroupIsADecimalNumberUpTo30OrANameOrAClass) {
    for (const char* const group :
         {"31", "-1", "+4", "4x", "x", "0x4", "4.0", "", " 4", "18446744073709551620"}) {
        SCOPED_TRACE(group);
        expectUsageError({"get", "4", group});
    }
}

TEST(Usage, AListHasNoEmptyElementAndARangeAscends) {
    for (const char* const groups :
         {",", "4,", ",4", "4,,5", "4-", "-4", "5-4", "30-31", "1-2-3", "udp-tcp", "4,x"}) {
        SCOPED_TRACE(groups);
        expectUsageError({"groups", groups});
    }
}

TEST(Usage, AClassOfSeveralGroupsIsNoSingleGroup) {
    expectUsageError({"set", "all", "0", "3=x"});
    expectUsageError({"set", "2,4", "0", "3=x"});
    expectUsageError({"instance", "QAV_System.Name=\"x\"", "--group", "1-2"});
    const support::ProgramResult result = owbctl({"set", "QAV_OperatingSystem", "0", "NumberOfUsers=1"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "owbctl: GROUP: 'QAV_OperatingSystem' names several groups, give one of 4, 17\n"
                          "try 'owbctl --help'\n");
}

TEST(Usage, AllIsOfferedOnlyWhereItIsAllowed) {
    EXPECT_EQ(owbctl({"get", "31"}).err,
              "owbctl: GROUP: '31' is neither a group (0 to 30, or all) nor the name or the class of one\n"
              "try 'owbctl --help'\n");
    EXPECT_EQ(owbctl({"set", "31", "0", "3=x"}).err,
              "owbctl: GROUP: '31' is neither a group (0 to 30) nor the name or the class of one\n"
              "try 'owbctl --help'\n");
}

TEST(Usage, NumbersOutOfRangeAreRejected) {
    expectUsageError({"watch", "4", "--interval", "0.05"});
    expectUsageError({"watch", "4", "--interval", "1e9"});
    expectUsageError({"watch", "4", "--interval", "soon"});
    expectUsageError({"watch", "4", "--count", "0"});
    expectUsageError({"watch", "4", "--count", "-1"});
    expectUsageError({"--timeout", "0", "groups"});
    expectUsageError({"--timeout", "nan", "groups"});
    expectUsageError({"watch", "4", "--interval", "nan"});
    expectUsageError({"get", "4", "--row", "-1"});
}

TEST(Usage, AnUnknownFormatIsRejected) {
    expectUsageError({"-o", "xml", "groups"});
    expectUsageError({"-o", "", "groups"});
}

TEST(Usage, HelpGoesToStandardOutputAndListsTheExitStatuses) {
    const support::ProgramResult result = owbctl({"--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    for (const char* const text :
         {"groups",   "get",      "watch",    "instance", "set",       "processes", "time",
          "doctor",   "version",  "--url",    "--output", "--timeout", "--trace",   "\n   0  ",
          "\n   1  ", "\n   2  ", "\n  12  ", "\n  13  ", "\n  14  ",  "\n  15  ",  "\n 124  "})
        EXPECT_NE(result.out.find(text), std::string::npos) << text;
}

TEST(Usage, TheShortOptionForHelpHasAnotherMeaningForGroupsInTables) {
    EXPECT_EQ(owbctl({"-h"}).out, owbctl({"--help"}).out);
    EXPECT_EQ(owbctl({"groups", "-h"}).exitCode, 0);
    expectUsageError({"get", "-h"});
    expectUsageError({"instance", "-h"});
}

TEST(Usage, ACommandHasItsOwnHelp) {
    const support::ProgramResult result = owbctl({"get", "--help"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("GROUP"), std::string::npos);
}

TEST(Usage, TheOptionVersionShowsThatOfTheLibrary) {
    const support::ProgramResult result = owbctl({"--version"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "owbctl v1.12\n");
}

TEST(Usage, TheCommandVersionShowsEachComponent) {
    EXPECT_EQ(owbctl({"version", "-o", "line"}).out.find("owbctl = 1."), 0u);
    const std::string table = owbctl({"version"}).out;
    EXPECT_NE(table.find("\nlibowb v1.12\nclient library " OWBCTL_CLIENT_LIBRARY "\n"), std::string::npos)
        << table;
    EXPECT_EQ(owbctl({"version", "-o", "csv"}).out.rfind("name,version\nowbctl,1.", 0), 0u);
    EXPECT_EQ(nlohmann::json::parse(owbctl({"version", "-o", "json"}).out)["versions"][1],
              nlohmann::json::parse(R"({"name": "libowb", "version": "v1.12"})"));
}

TEST(Usage, TheOptionUrlOverridesTheEnvironment) {
    const support::ScriptedPeer peer({instances({})});
    EXPECT_EQ(shell("OWB_URL=" + peer.url() + " \"$OWBCTL\" get 14").exitCode, 0);
    EXPECT_EQ(shell("OWB_URL=" + peer.url() + " \"$OWBCTL\" get 14 --url " + deadUrl()).exitCode, 15);
    EXPECT_NE(shell("OWB_URL= \"$OWBCTL\" doctor").out.find("%2ftmp%2fOpenWBEM_UDS: "), std::string::npos)
        << "an empty value counts as unset";
}

TEST(Usage, AMessageEscapesControlCharacters) {
    const support::ProgramResult result = owbctl({"get", "\x1b[31m"});
    EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
    EXPECT_NE(result.err.find("\\x1b[31m"), std::string::npos);
}

} // namespace
} // namespace owbctl_test
