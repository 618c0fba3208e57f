// The words that a shell completes, and its function.
#include "Owbctl.hpp"

#include <gtest/gtest.h>

namespace owbctl_test {
namespace {

std::string complete(std::vector<std::string> words) {
    words.insert(words.begin(), "complete");
    return owbctl(words).out;
}

TEST(Completion, CommandsAndOptionsAreThoseOfTheProgram) {
    EXPECT_EQ(complete({""}), "doctor\nget\ngroups\ninstance\nprocesses\nset\ntime\nversion\nwatch\n");
    EXPECT_EQ(complete({"g"}), "get\ngroups\n");
    EXPECT_EQ(complete({"--t"}), "--timeout\n--trace\n");
    EXPECT_EQ(complete({"watch", "--i"}), "--interval\n");
    EXPECT_EQ(complete({"watch", "4", "--u"}), "--url\n") << "those of the program too";
    EXPECT_EQ(complete({"time", ""}), "epoch\ninterval\n");
}

TEST(Completion, GroupsAreNumbersAndClasses) {
    EXPECT_EQ(complete({"get", "3"}), "3\n30\n");
    EXPECT_EQ(complete({"get", "a"}), "all\n");
    EXPECT_EQ(complete({"-o", "csv", "get", "4", "QAV_UDP"}), "QAV_UDPStatisticalData\n");
    EXPECT_EQ(complete({"watch", "HR_"}), "HR_DEVICE\nHR_NETWORK\n");
    EXPECT_EQ(complete({"watch", "4", "HR_"}), "") << "it takes one";
}

TEST(Completion, PropertiesAreThoseOfTheGroup) {
    EXPECT_EQ(complete({"set", "2", "0", "S"}), "SNMPObjectID=\nSysServices=\nSystemName=\nSystemVersion=\n");
    EXPECT_EQ(complete({"set", "2", ""}), "") << "of rows nothing is known";
    EXPECT_EQ(complete({"get", "2", "4", "--property", "SystemName", "Num"}),
              "NumberOfProcesses\nNumberOfUsers\n");
}

TEST(Completion, ValuesOfOptionsAreOffered) {
    EXPECT_EQ(complete({"-o", ""}), "csv\njson\nline\ntable\n");
    EXPECT_EQ(complete({"get", "4", "--output", "j"}), "json\n");
    EXPECT_EQ(complete({"time", "interval", "--unit", ""}), "cs\nms\ns\nus\n");
    EXPECT_EQ(complete({"--url", ""}), "");
    EXPECT_EQ(complete({"--url", "x", "gr"}), "groups\n") << "the value is no command";
}

TEST(Completion, TheShellAsksTheProgram) {
    const support::ProgramResult result = support::runProgram(
        {"/bin/bash", "-c",
         "source '" OWBCTL_COMPLETION "'; COMP_WORDS=('" OWBCTL "' get QAV_UDP); COMP_CWORD=2; "
         "_owbctl '" OWBCTL "'; echo \"${COMPREPLY[@]}\"; complete -p owbctl"});
    EXPECT_EQ(result.out, "QAV_UDPStatisticalData\ncomplete -o default -F _owbctl owbctl\n") << result.err;
}

} // namespace
} // namespace owbctl_test
