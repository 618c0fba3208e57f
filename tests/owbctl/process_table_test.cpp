#include "formats/ProcessTable.hpp"

#include <gtest/gtest.h>

namespace owbctl {

using namespace agent;

namespace {

ProcessInformation sleeping() {
    return {"bash", "/usr/bin/bash", {"-c", "echo"}, "4", "2"};
}

ProcessStatistics small() {
    return {"00000000000007.250000:000", "2368", "948", "132"};
}

TEST(ProcessTable, AProcessIsOneLineOfNamesTimesAndSizes) {
    EXPECT_EQ(processTable({{"1", sleeping(), small()}, {"4711", sleeping(), small()}}).text(),
              "Handle  State  Kind         CPU time  Text  Data  Stack  Command\n"
              "     1  ready  application  00:00:07  2368   948    132  /usr/bin/bash -c echo\n"
              "  4711  ready  application  00:00:07  2368   948    132  /usr/bin/bash -c echo\n");
}

// A cell of the table of one process.
std::string cell(const Process& process, const std::string& column) {
    const std::string text = processTable({process}).text();
    const std::size_t line = text.find('\n') + 1;
    const std::size_t begin = line + text.find(column);
    return text.substr(begin, text.find("  ", begin) - begin);
}

std::string state(const std::string& code) {
    ProcessInformation information = sleeping();
    information.executionState = code;
    return cell({"1", information, small()}, "State");
}

TEST(ProcessTable, StatesHaveNames) {
    EXPECT_EQ(state("0"), "unknown");
    EXPECT_EQ(state("2"), "ready");
    EXPECT_EQ(state("3"), "running");
    EXPECT_EQ(state("4"), "stopped");
    EXPECT_EQ(state("5"), "waiting");
    EXPECT_EQ(state("7"), "zombie");
    EXPECT_EQ(state("odd"), "odd");
}

TEST(ProcessTable, KindsHaveNames) {
    const auto kind = [](const std::string& code) {
        ProcessInformation information = sleeping();
        information.runType = code;
        return cell({"1", information, small()}, "Kind");
    };
    EXPECT_EQ(kind("2"), "operating system");
    EXPECT_EQ(kind("3"), "device driver");
    EXPECT_EQ(kind("4"), "application");
}

TEST(ProcessTable, DaysPrecedeTheTime) {
    const auto time = [](const std::string& interval) {
        ProcessStatistics statistics = small();
        statistics.cpuTime = interval;
        return cell({"1", sleeping(), statistics}, "CPU time");
    };
    EXPECT_EQ(time("00000000235959.999999:000"), "23:59:59");
    EXPECT_EQ(time("00000001000000.000000:000"), "1-00:00:00");
    EXPECT_EQ(time("00049710062815.000000:000"), "49710-06:28:15");
    EXPECT_EQ(time("odd"), "odd");
}

TEST(ProcessTable, AMissingGroupShowsDashes) {
    EXPECT_EQ(processTable({{"1", sleeping(), std::nullopt}, {"2", std::nullopt, small()}}).text(),
              "Handle  State  Kind         CPU time  Text  Data  Stack  Command\n"
              "     1  ready  application  -            -     -      -  /usr/bin/bash -c echo\n"
              "     2  -      -            00:00:07  2368   948    132  -\n");
}

TEST(ProcessTable, AKernelThreadShowsItsNameInBrackets) {
    const ProcessInformation thread = {"kthreadd", "", {}, "4", "2"};
    EXPECT_EQ(cell({"2", thread, small()}, "Command"), "[kthreadd]\n");
}

TEST(ProcessTable, AProgramWithoutAPathShowsItsName) {
    const ProcessInformation daemon = {"sshd", "", {"-D"}, "4", "2"};
    EXPECT_EQ(cell({"2", daemon, small()}, "Command"), "[sshd] -D\n");
}

TEST(ProcessTable, ControlCharactersAreEscaped) {
    const ProcessInformation odd = {"a\nb", "/bin/\x1b[31m", {"c\td"}, "4", "2"};
    EXPECT_EQ(cell({"2", odd, small()}, "Command"), "/bin/\\x1b[31m c\\td\n");
    const ProcessInformation thread = {"a\nb", "", {}, "4", "2"};
    EXPECT_EQ(cell({"2", thread, small()}, "Command"), "[a\\nb]\n");
}

} // namespace
} // namespace owbctl
