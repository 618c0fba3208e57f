// Completion: the candidates of the program, and the function of the shell.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

std::string complete(std::vector<std::string> words) {
    words.insert(words.begin(), "complete");
    return owbctl(words).out;
}

TEST(Completion, CommandsAndOptionsComeFromTheProgram) {
    EXPECT_EQ(complete({""}),
              "doctor\nget\ngroups\nhelp\ninstance\nmetrics\nprocesses\nset\ntime\nversion\nwatch\n");
    EXPECT_EQ(complete({"g"}), "get\ngroups\n");
    EXPECT_EQ(complete({"--t"}), "--timeout\n--trace\n");
    EXPECT_EQ(complete({"watch", "--i"}), "--interval\n");
    EXPECT_EQ(complete({"watch", "4", "--u"}), "--url\n") << "options of the program, too";
    EXPECT_EQ(complete({"time", ""}), "epoch\ninterval\n");
}

TEST(Completion, GroupsAreOfferedAsNumbersNamesAndClasses) {
    EXPECT_EQ(complete({"get", "3"}), "3\n30\n");
    EXPECT_EQ(complete({"get", "a"}), "all\n");
    EXPECT_EQ(complete({"-o", "csv", "get", "4", "QAV_UDP"}), "QAV_UDPStatisticalData\n");
    EXPECT_EQ(complete({"get", "ud"}), "udp\n");
    EXPECT_EQ(complete({"watch", "HR_"}), "HR_DEVICE\nHR_NETWORK\n");
    EXPECT_EQ(complete({"watch", "4", "HR_"}), "HR_DEVICE\nHR_NETWORK\n");
    EXPECT_EQ(complete({"set", "sys"}), "system\nsystem-change\n");
}

TEST(Completion, PropertiesOfTheGroupAreOffered) {
    EXPECT_EQ(complete({"get", "2", "4", "--property", "SystemName", "Num"}),
              "NumberOfProcesses\nNumberOfUsers\n");
    EXPECT_EQ(complete({"get", "2", "--columns", "SystemN"}), "SystemName\n");
    EXPECT_EQ(complete({"get", "2", "--where", "SystemN"}), "SystemName=\n");
    EXPECT_EQ(complete({"get", "2", "--where", "SystemName=x", "syst"}), "system\nsystem-change\n")
        << "the option takes one";
}

TEST(Completion, AWriteIsOfferedOnlyPropertiesThatItCanChange) {
    EXPECT_EQ(complete({"set", "2", "0", ""}), "InstalledLocation=\nPrimaryOwnerContact=\n");
    EXPECT_EQ(complete({"set", "system", "0", "3=x", "I"}), "InstalledLocation=\n");
    EXPECT_EQ(complete({"set", "9", "0", ""}), "");
    EXPECT_EQ(complete({"set", "2", ""}), "") << "rows have no candidates";
}

TEST(Completion, ValuesOfOptionsAreOffered) {
    EXPECT_EQ(complete({"-o", ""}), "csv\njson\nline\ntable\nwide\n");
    EXPECT_EQ(complete({"get", "4", "--output", "j"}), "json\n");
    EXPECT_EQ(complete({"get", "4", "--output=j"}), "--output=json\n");
    EXPECT_EQ(complete({"time", "interval", "--unit", ""}), "cs\nms\ns\nus\n");
    EXPECT_EQ(complete({"processes", "--sort", "m"}), "memory\n");
    EXPECT_EQ(complete({"--url", ""}), "");
    EXPECT_EQ(complete({"--url", "x", "gr"}), "groups\n") << "the value is not a command";
}

/** The candidates of bash for a command line with the cursor at its end. */
std::string offered(const std::string& line) {
    const support::ProgramResult result = support::runProgram(
        {"/bin/bash", "-c",
         "source '" OWBCTL_COMPLETION "'; compopt() { :; }; COMP_LINE=$1; COMP_POINT=${#1}; _owbctl '" OWBCTL
         "'; printf '%s\\n' \"${COMPREPLY[@]}\"",
         "bash", line});
    EXPECT_EQ(result.err, "");
    return result.out;
}

TEST(Completion, TheShellFunctionAsksTheProgram) {
    EXPECT_EQ(offered("owbctl get QAV_UDP"), "QAV_UDPStatisticalData\n");
    EXPECT_EQ(offered("owbctl watch HR_N"), "HR_NETWORK\n");
    EXPECT_EQ(offered("owbctl time "), "epoch\ninterval\n");
}

TEST(Completion, WordsThatTheShellSplitsReachTheProgramAsOne) {
    EXPECT_EQ(offered("owbctl --url http://h:5988 wat"), "watch\n");
    EXPECT_EQ(offered("owbctl --output=js"), "json\n") << "only the part after the =";
    EXPECT_EQ(offered("owbctl set 2 0 PrimaryOwnerContact=Sys"), "\n") << "values have no candidates";
    EXPECT_EQ(offered("owbctl set 2 0 PrimaryO"), "PrimaryOwnerContact=\n");
}

} // namespace
} // namespace owbctl_test
