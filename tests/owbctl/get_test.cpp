// `owbctl get`: the tables.
#include "Owbctl.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <vector>

namespace owbctl_test {
namespace {

using namespace support::wire;

// A TCP connection: group 7.
std::string connection(unsigned long port, const std::string& address) {
    return instance("QAV_TCPProtocolEndpoint", {property("LocalPort", UINT32, bigEndian(port, 4)),
                                                stringProperty("LocalAddress", address)});
}

TEST(Get, ASingleRowShowsOnePropertyOnEachLineInCatalogueOrder) {
    const support::ProgramResult result =
        get({instanceOf({property("NumberOfUsers", UINT32, bigEndian(7, 4)),
                         stringProperty("LastBootUpTime", "20260101000000.000000+060"),
                         nullProperty("MaxNumberOfProcesses", UINT32)})},
            {"4"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Group 4  QAV_OperatingSystem  (1 row, 2 items)\n"
                          "LastBootUpTime  2026-01-01 00:00:00 +0100\n"
                          "NumberOfUsers   7\n");
}

TEST(Get, SeveralRowsFormATableOfAllPropertiesWithAValue) {
    const support::ProgramResult result =
        get({instances({connection(80, "::1"), connection(50123, "192.0.2.1")})}, {"7"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Group 7  QAV_TCPProtocolEndpoint  (2 rows, 4 items)\n"
                          "LocalAddress  LocalPort  Row\n"
                          "::1                  80    0\n"
                          "192.0.2.1         50123    1\n");
}

TEST(Get, AMissingValueIsADash) {
    const std::string other =
        instance("QAV_TCPProtocolEndpoint", {property("LocalPort", UINT32, bigEndian(1, 4))});
    const support::ProgramResult result = get({instances({connection(80, "::1"), other})}, {"7"});
    EXPECT_EQ(result.out, "Group 7  QAV_TCPProtocolEndpoint  (2 rows, 3 items)\n"
                          "LocalAddress  LocalPort  Row\n"
                          "::1                  80    0\n"
                          "-                     1    1\n");
}

TEST(Get, ARowWithoutValuesKeepsItsNumber) {
    const std::string empty = instance("QAV_TCPProtocolEndpoint", {nullProperty("LocalPort", UINT32)});
    const support::ProgramResult several =
        get({instances({connection(80, "::1"), empty, connection(81, "::1")})}, {"7"});
    EXPECT_EQ(several.out, "Group 7  QAV_TCPProtocolEndpoint  (2 rows, 4 items)\n"
                           "LocalAddress  LocalPort  Row\n"
                           "::1                  80    0\n"
                           "::1                  81    2\n");
    const support::ProgramResult one = get({instances({empty, connection(81, "::1")})}, {"7"});
    EXPECT_EQ(one.out, "Group 7  QAV_TCPProtocolEndpoint  (row 1, 2 items)\n"
                       "LocalAddress  ::1\n"
                       "LocalPort     81\n");
}

TEST(Get, AGroupWithoutRowsHasNoData) {
    const support::ProgramResult result = get({instances({})}, {"14"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n");
}

TEST(Get, ArrayElementsAreSeparatedByCommas) {
    const support::ProgramResult result =
        get({instanceOf({arrayProperty("OtherIdentifyingInfo", STRING, {text("one"), text("two")})})}, {"0"});
    EXPECT_EQ(result.out, "Group 0  QAV_K70Chassis  (1 row, 2 items)\nOtherIdentifyingInfo  one, two\n");
}

TEST(Get, GroupsFollowTheOrderOfTheArguments) {
    const support::ProgramResult result = get({instances({})}, {"14", "4", "14"});
    EXPECT_EQ(result.out, "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n\n"
                          "Group 4  QAV_OperatingSystem  (0 rows, 0 items)\nno data\n\n"
                          "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n");
}

TEST(Get, AllReadsEveryGroupByAscendingNumber) {
    const support::ProgramResult result = get({instances({})}, {"14", "all", "-ojson"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const nlohmann::json document = nlohmann::json::parse(result.out);
    std::vector<int> numbers;
    for (const nlohmann::json& group : document["groups"])
        numbers.push_back(group["group"]);
    std::vector<int> expected{14};
    for (int number = 0; number <= 30; ++number)
        expected.push_back(number);
    EXPECT_EQ(numbers, expected);
}

TEST(Get, ControlCharactersNeitherBreakTheTableNorReachTheTerminal) {
    const support::ProgramResult result =
        get({instanceOf({stringProperty("SystemName", "a\nb\tc\rd\x1b[31me\x7f\xc2\x9b")})}, {"2"});
    EXPECT_EQ(result.out, "Group 2  QAV_System  (1 row, 1 item)\n"
                          "SystemName  a\\nb\\tc\\rd\\x1b[31me\\x7f\\xc2\\x9b\n");
}

TEST(Get, ColumnsAreAlignedByCharactersNotBytes) {
    const support::ProgramResult result =
        get({instances({connection(80, "d\xc3\xbcne"), connection(443, "sand-sand-sand")})}, {"7"});
    EXPECT_EQ(result.out, "Group 7  QAV_TCPProtocolEndpoint  (2 rows, 4 items)\n"
                          "LocalAddress    LocalPort  Row\n"
                          "d\xc3\xbcne                   80    0\n"
                          "sand-sand-sand        443    1\n");
}

TEST(Get, MessagesOfTheLibraryAboutDuplicatesGoToStandardError) {
    const support::ProgramResult result =
        get({instanceOf({stringProperty("SystemName", "one"), stringProperty("SystemName", "two")})}, {"2"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Group 2  QAV_System  (1 row, 2 items)\nSystemName  one, two\n");
    EXPECT_NE(result.err, "");
}

TEST(Get, AClassSelectsEachGroupThatHasIt) {
    const support::ProgramResult result = get({instances({})}, {"qav_operatingsystem"});
    EXPECT_EQ(result.out, "Group 4  QAV_OperatingSystem  (0 rows, 0 items)\nno data\n\n"
                          "Group 17  QAV_OperatingSystem  (0 rows, 0 items)\nno data\n");
}

TEST(Get, OptionsMayFollowTheCommandAndItsGroups) {
    const support::ScriptedPeer peer({instances({})});
    const support::ProgramResult result = owbctl({"get", "14", "--url", peer.url()});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(peer.connections(), 1u);
}

} // namespace
} // namespace owbctl_test
