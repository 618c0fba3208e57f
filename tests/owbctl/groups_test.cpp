// `owbctl groups`.
#include "Owbctl.hpp"

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

TEST(Groups, EachGroupIsOneLineWithItsClassAndItsNominators) {
    const support::ProgramResult result = owbctl({"groups"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const std::vector<std::string> lines = linesOf(result.out);
    ASSERT_EQ(lines.size(), 1u + 31u);
    EXPECT_EQ(lines[0], "Group  Class                                  Nominators");
    EXPECT_EQ(lines[1 + 12],
              "   12  QAV_IPProtocolEndpoint                 0=Forwarding 1=DefaultTTL 12=ReassemblyTimeout");
    EXPECT_EQ(lines[1 + 22].substr(0, 60), "   22  QAV_UnixProcessStatisticalInformation  7=TotalCPUTime");
}

TEST(Groups, OneGroupIsShownInFull) {
    const std::string expected =
        "Group 10  QAV_NetworkPortStatistics  (13 properties)\n"
        "Nominator  Property         Kind     Unit     Description\n"
        "       26  InstanceID       key      -        Name of the interface in the kernel.\n"
        "        9  InOctets         counter  Bytes    Bytes received, with those of the link layer.\n";
    const std::string shown = owbctl({"groups", "10"}).out;
    EXPECT_EQ(shown.substr(0, expected.size()), expected);
    EXPECT_NE(shown.find("\n       20  OutQLen          gauge    Packets  Packets in the output queue.\n"
                         "Keys of a write: none\n"),
              std::string::npos)
        << shown;
    EXPECT_EQ(owbctl({"groups", "qav_networkPORTstatistics"}).out, shown);
}

TEST(Groups, SeveralGroupsAreShownOneAfterTheOther) {
    EXPECT_EQ(
        owbctl({"groups", "1", "25"}).out,
        "Group 1  QAV_System  (1 property)\n"
        "Nominator  Property        Kind  Unit  Description\n"
        "        0  LastChangeTime  date  -     Time at which the name of the host or of its operating "
        "system last changed.\n"
        "Keys of a write: none\n"
        "\n"
        "Group 25  HR_NETWORK  (2 properties)\n"
        "Nominator  Property           Kind       Unit  Description\n"
        "        0  _HR_NETWORK_INDEX  reference  -     Index of the network interface (group 9).\n"
        "        1  _HR_DEVICE_INDEX   reference  -     Index of the interface as a device (group 21).\n"
        "Keys of a write: none\n");
    EXPECT_NE(owbctl({"groups", "2"}).out.find("\nKeys of a write: Name, CreationClassName\n"),
              std::string::npos);
}

TEST(Groups, EachLineOrRecordIsOneNominator) {
    EXPECT_EQ(owbctl({"groups", "25", "-o", "line"}).out, "25 HR_NETWORK._HR_NETWORK_INDEX = 0\n"
                                                          "25 HR_NETWORK._HR_DEVICE_INDEX = 1\n");
    EXPECT_EQ(owbctl({"groups", "14", "-o", "csv"}).out, "group,class,nominator,property,counter\n"
                                                         "14,QAV_UDPStatisticalData,0,InDatagrams,yes\n"
                                                         "14,QAV_UDPStatisticalData,1,NoPorts,yes\n"
                                                         "14,QAV_UDPStatisticalData,2,InErrors,yes\n"
                                                         "14,QAV_UDPStatisticalData,3,OutDatagrams,yes\n");
}

TEST(Groups, NoObjectManagerIsContacted) {
    EXPECT_EQ(owbctl({"groups", "--url", deadUrl()}).exitCode, 0);
}

TEST(Groups, LinesAreWrappedToTheWidthOfATerminal) {
    const support::ProgramResult result =
        shell("script -qec 'stty cols 90 -onlcr; \"$OWBCTL\" groups' /dev/null");
    ASSERT_EQ(result.exitCode, 0) << result.out;
    const std::vector<std::string> lines = linesOf(result.out);
    EXPECT_GT(lines.size(), 1u + 31u);
    std::string joined;
    for (const std::string& line : lines) {
        EXPECT_LE(line.size(), 90u);
        const std::size_t text = line.find_first_not_of(' ');
        ASSERT_NE(text, std::string::npos);
        joined += (text > 40 ? " " + line.substr(text) : "\n" + line);
    }
    EXPECT_EQ(joined.substr(1) + "\n", owbctl({"groups"}).out) << "every word must be there";
}

TEST(Groups, TheJsonDocumentHoldsEveryGroup) {
    const support::ProgramResult result = owbctl({"-ojson", "groups"});
    ASSERT_EQ(result.exitCode, 0);
    const nlohmann::json document = nlohmann::json::parse(result.out);
    EXPECT_EQ(document.at("format_version"), 1);
    ASSERT_EQ(document.at("groups").size(), 31u);
    EXPECT_EQ(document["groups"][12], nlohmann::json::parse(R"({
        "group": 12, "class": "QAV_IPProtocolEndpoint", "keys": [], "properties": [
            {"nominator": 0, "name": "Forwarding", "counter": false},
            {"nominator": 1, "name": "DefaultTTL", "counter": false},
            {"nominator": 12, "name": "ReassemblyTimeout", "counter": false}]})"));
    EXPECT_EQ(document["groups"][2]["keys"], nlohmann::json::array({"Name", "CreationClassName"}));
    EXPECT_EQ(document["groups"][6]["properties"][0]["counter"], true);
}

} // namespace
} // namespace owbctl_test
