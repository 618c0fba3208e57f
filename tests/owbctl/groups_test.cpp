// `owbctl groups`.
#include "Owbctl.hpp"
#include "Screens.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace owbctl_test {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST(Groups, EachGroupIsOneLineWithItsNameClassAndDescription) {
    const support::ProgramResult result = owbctl({"groups"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const std::vector<std::string> lines = linesOf(result.out);
    ASSERT_EQ(lines.size(), 1u + 31u);
    EXPECT_EQ(lines[0], "Group  Name                   Class                                  Description");
    EXPECT_EQ(lines[1 + 12],
              "   12  ip-settings            QAV_IPProtocolEndpoint                 IP version 4: settings");
}

TEST(Groups, TheListFitsTheTerminal) {
    expectScreen("groups.80", shown({"groups"}, 80));
    expectScreen("groups.140", shown({"groups"}, 140));
}

TEST(Groups, OneGroupIsShownInFull) {
    expectScreen("groups-9.80", shown({"groups", "9"}, 80));
    expectScreen("groups-9.140", shown({"groups", "9"}, 140));
}

TEST(Groups, TheNominatorsOfAGroupAscend) {
    const std::vector<std::string> lines = linesOf(owbctl({"groups", "10", "-o", "line"}).out);
    ASSERT_EQ(lines.size(), 13u);
    EXPECT_EQ(lines.front(), "10 QAV_NetworkPortStatistics.InOctets = 9");
    EXPECT_EQ(lines.back(), "10 QAV_NetworkPortStatistics.InstanceID = 26");
}

TEST(Groups, AGroupHasANumberANameAndAClass) {
    const std::string shown = owbctl({"groups", "10"}).out;
    EXPECT_NE(shown.find("Bytes received, with those of the link layer. Unit: Bytes.\n"), std::string::npos)
        << shown;
    EXPECT_EQ(owbctl({"groups", "Traffic"}).out, shown);
    EXPECT_EQ(owbctl({"groups", "qav_networkPORTstatistics"}).out, shown);
}

TEST(Groups, AListOrARangeNamesSeveralGroups) {
    const std::string shown = owbctl({"groups", "2", "3", "4", "14"}).out;
    EXPECT_EQ(owbctl({"groups", "2-4", "14"}).out, shown);
    EXPECT_EQ(owbctl({"groups", "2,3,4,udp"}).out, shown);
    EXPECT_EQ(owbctl({"groups", "2-4,QAV_UDPStatisticalData"}).out, shown);
    EXPECT_EQ(owbctl({"groups", "1-1"}).out, owbctl({"groups", "1"}).out);
}

TEST(Groups, APropertyThatAWriteCanChangeIsMarked) {
    const std::string shown = owbctl({"groups", "2"}).out;
    EXPECT_NE(shown.find("  3  PrimaryOwnerContact  text   yes  Person "), std::string::npos) << shown;
    EXPECT_NE(shown.find("  4  SystemName           text   -    Name "), std::string::npos) << shown;
    EXPECT_EQ(owbctl({"groups", "27"}).out.find("  yes  "), std::string::npos)
        << "the write of the library does not name the instance";
}

TEST(Groups, SeveralGroupsAreShownOneAfterTheOther) {
    EXPECT_EQ(owbctl({"groups", "1", "25"}).out,
              "Group 1  system-change  QAV_System\n"
              "When the name of the host or of its operating system last changed.\n"
              "No.  Property        Kind  Set  Description\n"
              "  0  LastChangeTime  date  -    Time at which the name of the host or of its operating system "
              "last changed.\n"
              "Keys of a write: none\n"
              "\n"
              "Group 25  interface-devices  HR_NETWORK\n"
              "Which device (group 21) a network interface (group 9) is.\n"
              "No.  Property           Kind       Set  Description\n"
              "  0  _HR_NETWORK_INDEX  reference  -    Index of the network interface (group 9).\n"
              "  1  _HR_DEVICE_INDEX   reference  -    Index of the interface as a device (group 21).\n"
              "Keys of a write: none\n");
    EXPECT_NE(owbctl({"groups", "2"}).out.find("\nKeys of a write: Name, CreationClassName\n"),
              std::string::npos);
}

TEST(Groups, EachLineOrRecordIsOneNominator) {
    EXPECT_EQ(owbctl({"groups", "25", "-o", "line"}).out, "25 HR_NETWORK._HR_NETWORK_INDEX = 0\n"
                                                          "25 HR_NETWORK._HR_DEVICE_INDEX = 1\n");
    EXPECT_EQ(linesOf(owbctl({"groups", "14,2", "-o", "csv"}).out)[0],
              "group,class,nominator,property,counter,name,kind,unit,settable,description");
    EXPECT_EQ(linesOf(owbctl({"groups", "14", "-o", "csv"}).out)[2],
              "14,QAV_UDPStatisticalData,1,NoPorts,yes,udp,counter,Datagrams,no,"
              "Datagrams received for a port without a program.");
    EXPECT_EQ(linesOf(owbctl({"groups", "2", "-o", "csv"}).out)[3],
              "2,QAV_System,3,PrimaryOwnerContact,no,system,text,,yes,Person to contact about the host.");
}

TEST(Groups, NoObjectManagerIsContacted) {
    EXPECT_EQ(owbctl({"groups", "--url", deadUrl()}).exitCode, 0);
}

TEST(Groups, TheJsonDocumentHoldsEveryGroup) {
    const support::ProgramResult result = owbctl({"-ojson", "groups"});
    ASSERT_EQ(result.exitCode, 0);
    const nlohmann::json document = nlohmann::json::parse(result.out);
    EXPECT_EQ(document.at("format_version"), 1);
    ASSERT_EQ(document.at("groups").size(), 31u);
    EXPECT_EQ(document["groups"][12]["properties"].size(), 3u);
    EXPECT_EQ(document["groups"][12]["properties"][2]["name"], "ReassemblyTimeout");
    EXPECT_EQ(document["groups"][25], nlohmann::json::parse(R"({
        "group": 25, "name": "interface-devices", "class": "HR_NETWORK",
        "description": "Which device (group 21) a network interface (group 9) is", "keys": [], "properties": [
            {"nominator": 0, "name": "_HR_NETWORK_INDEX", "counter": false, "kind": "reference", "unit": null,
             "settable": false, "description": "Index of the network interface (group 9)."},
            {"nominator": 1, "name": "_HR_DEVICE_INDEX", "counter": false, "kind": "reference", "unit": null,
             "settable": false, "description": "Index of the interface as a device (group 21)."}]})"));
    EXPECT_EQ(document["groups"][2]["properties"][2]["settable"], true);
    EXPECT_EQ(document["groups"][6]["properties"][0]["unit"], "Connections");
    EXPECT_EQ(document["groups"][2]["keys"], nlohmann::json::array({"Name", "CreationClassName"}));
    EXPECT_EQ(document["groups"][6]["properties"][0]["counter"], true);
}

} // namespace
} // namespace owbctl_test
