// `owbctl get`: the rows and properties that options select.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

using namespace support::wire;

// A TCP connection: group 7.
std::string connection(unsigned long port, const std::string& address, unsigned long state) {
    return instance("QAV_TCPProtocolEndpoint", {property("LocalPort", UINT32, bigEndian(port, 4)),
                                                stringProperty("LocalAddress", address),
                                                property("ConnectionState", UINT16, bigEndian(state, 2))});
}

// Rows 0 to 2: ports 80, 81 and 82.
support::Step connections() {
    return instances({connection(80, "::1", 2), connection(81, "::2", 5), connection(82, "::2", 5)});
}

/** The output of `get 7 -o csv` with further arguments. */
std::string csv(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"7", "-ocsv"});
    const support::ProgramResult result = get({connections()}, arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return result.out;
}

TEST(Selection, PropertiesAreSelectedByNameOrNominatorInTheGroupsThatHaveThem) {
    const support::Step system =
        instanceOf({stringProperty("SystemName", "here"), stringProperty("PrimaryOwnerContact", "me"),
                    stringProperty("Description", "box")});
    EXPECT_EQ(get({system}, {"2", "14", "--property", "0", "systemname"}).out,
              "Group 2  QAV_System  (1 row, 2 items)\n"
              "Description  box\n"
              "SystemName   here\n\n"
              "Group 14  QAV_UDPStatisticalData  (0 rows, 0 items)\nno data\n");
}

TEST(Selection, SelectedPropertiesAreAloneInTablesInTheOrderOfTheRequest) {
    EXPECT_EQ(get({connections()}, {"7", "--property", "LocalPort", "RemotePort", "LocalAddress"}).out,
              "Group 7  QAV_TCPProtocolEndpoint  (3 rows, 6 items)\n"
              "Row  LocalPort  RemotePort  LocalAddress\n"
              "  0         80  -           ::1\n"
              "  1         81  -           ::2\n"
              "  2         82  -           ::2\n");
}

TEST(Selection, SelectedPropertiesAreTheOnlyColumnsOfCsv) {
    const std::string expected = "group,class,row,LocalPort,LocalAddress\n"
                                 "7,QAV_TCPProtocolEndpoint,0,80,::1\n"
                                 "7,QAV_TCPProtocolEndpoint,1,81,::2\n"
                                 "7,QAV_TCPProtocolEndpoint,2,82,::2\n";
    EXPECT_EQ(csv({"--property", "LocalPort", "LocalAddress"}), expected);
    EXPECT_EQ(csv({"--columns", "LocalPort,LocalAddress"}), expected);
    EXPECT_EQ(csv({"--columns", "LocalPort", "--columns=1,localport"}), expected) << "each once";
}

TEST(Selection, SelectedPropertiesAreTheOnlyOnesInLinesAndJson) {
    EXPECT_EQ(get({connections()}, {"7", "-oline", "--row", "1", "--columns", "LocalPort,LocalAddress"}).out,
              "7 QAV_TCPProtocolEndpoint[1].LocalPort = 81\n"
              "7 QAV_TCPProtocolEndpoint[1].LocalAddress = ::2\n");
    EXPECT_EQ(get({connections()}, {"7", "-ojson", "--property", "LocalPort"}).out.find("LocalAddress"),
              std::string::npos);
}

TEST(Selection, AnUnknownPropertyIsRejectedBeforeAnythingIsRead) {
    for (const std::vector<std::string>& option : {std::vector<std::string>{"--property", "SystemName"},
                                                   {"--columns", "SystemName"},
                                                   {"--where", "SystemName=x"}}) {
        const support::ScriptedPeer peer({instances({})});
        std::vector<std::string> arguments{"--url", peer.url(), "get", "14"};
        arguments.insert(arguments.end(), option.begin(), option.end());
        const support::ProgramResult result = owbctl(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.err.find("owbctl: none of the groups has a property 'SystemName'"), 0u)
            << result.err;
        EXPECT_EQ(peer.connections(), 0u);
    }
}

TEST(Selection, ARowIsSelectedByItsNumber) {
    EXPECT_EQ(get({connections()}, {"7", "--row", "1"}).out,
              "Group 7  QAV_TCPProtocolEndpoint  (row 1, 3 items)\n"
              "LocalAddress     ::2\n"
              "LocalPort        81\n"
              "ConnectionState  established (5)\n");
}

TEST(Selection, SeveralRowsAreAListOrRepeatedOptions) {
    const std::string expected = "group,class,row,LocalPort\n"
                                 "7,QAV_TCPProtocolEndpoint,0,80\n"
                                 "7,QAV_TCPProtocolEndpoint,2,82\n";
    EXPECT_EQ(csv({"--row", "0,2", "--columns", "LocalPort"}), expected);
    EXPECT_EQ(csv({"--row", "2", "--row", "0", "--columns", "LocalPort"}), expected);
    EXPECT_EQ(get({connections()}, {"7", "--row", "0,x"}).exitCode, 2);
}

TEST(Selection, EachMissingRowGivesAMessageAndStatus1) {
    const support::ProgramResult result = get({connections()}, {"7", "--row", "1,3,4"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: row 3: no such row, or it has no value\n"
                          "owbctl: row 4: no such row, or it has no value\n");
}

TEST(Selection, ARowWithoutASelectedValueIsMissing) {
    const support::ProgramResult result =
        get({connections()}, {"7", "--row", "1", "--property", "RemotePort"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "owbctl: row 1: no such row, or it has no value\n");
}

TEST(Selection, AConditionComparesTheTextOfAnItem) {
    EXPECT_EQ(csv({"--where", "localaddress=::2", "--columns", "LocalPort"}),
              "group,class,row,LocalPort\n"
              "7,QAV_TCPProtocolEndpoint,1,81\n"
              "7,QAV_TCPProtocolEndpoint,2,82\n");
    EXPECT_EQ(csv({"--where", "LocalAddress=::", "--columns", "LocalPort"}), "group,class,row,LocalPort\n");
}

TEST(Selection, AConditionComparesTheNameOfACode) {
    const std::string expected = "group,class,row,LocalPort\n7,QAV_TCPProtocolEndpoint,0,80\n";
    EXPECT_EQ(csv({"--where", "ConnectionState=Listen", "--columns", "LocalPort"}), expected);
    EXPECT_EQ(csv({"--where", "ConnectionState=2", "--columns", "LocalPort"}), expected);
}

TEST(Selection, AllOfSeveralConditionsHold) {
    EXPECT_EQ(csv({"--where", "LocalAddress=::2", "--where", "LocalPort=82", "--columns", "LocalPort"}),
              "group,class,row,LocalPort\n7,QAV_TCPProtocolEndpoint,2,82\n");
}

TEST(Selection, AConditionHoldsIfAnyValueOfAnArrayMeetsIt) {
    const support::Step system =
        instanceOf({arrayProperty("OtherIdentifyingInfo", STRING, {text("one"), text("two")})});
    EXPECT_EQ(get({system}, {"0", "-oline", "--where", "OtherIdentifyingInfo=two"}).out,
              "0 QAV_K70Chassis[0].OtherIdentifyingInfo[0] = one\n"
              "0 QAV_K70Chassis[0].OtherIdentifyingInfo[1] = two\n");
}

TEST(Selection, AConditionWithoutAnEqualsSignIsAUsageError) {
    const support::ProgramResult result = owbctl({"get", "7", "--where", "LocalPort"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "owbctl: 'LocalPort' does not have the form NAME=VALUE\ntry 'owbctl --help'\n");
}

TEST(Selection, AConditionMayPrecedeTheGroups) {
    EXPECT_EQ(
        get({connections()}, {"--where", "LocalPort=82", "--row", "2", "7", "-oline", "--columns", "2"}).out,
        "7 QAV_TCPProtocolEndpoint[2].LocalPort = 82\n");
}

} // namespace
} // namespace owbctl_test
