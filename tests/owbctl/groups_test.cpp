// `owbctl groups`: the catalogue.
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

TEST(Groups, EachGroupHasALineWithItsClassAndItsNominators) {
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

TEST(Groups, AnObjectManagerIsNotAsked) {
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
    EXPECT_EQ(joined.substr(1) + "\n", owbctl({"groups"}).out) << "no word may get lost";
}

TEST(Groups, TheJsonDocumentHoldsEveryGroup) {
    const support::ProgramResult result = owbctl({"--json", "groups"});
    ASSERT_EQ(result.exitCode, 0);
    const nlohmann::json document = nlohmann::json::parse(result.out);
    EXPECT_EQ(document.at("format_version"), 1);
    ASSERT_EQ(document.at("groups").size(), 31u);
    EXPECT_EQ(document["groups"][12], nlohmann::json::parse(R"({
        "group": 12, "class": "QAV_IPProtocolEndpoint", "properties": [
            {"nominator": 0, "name": "Forwarding"},
            {"nominator": 1, "name": "DefaultTTL"},
            {"nominator": 12, "name": "ReassemblyTimeout"}]})"));
}

} // namespace
} // namespace owbctl_test
