#include "formats/ProcessTable.hpp"

#include "Screens.hpp"

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

TEST(ProcessTable, AProcessIsOneLineThatBeginsWithItsNameAndNumber) {
    EXPECT_EQ(processTable({{"1", sleeping(), small()}, {"4711", sleeping(), small()}}).text(),
              "Name   PID  State  CPU time  Memory (kB)  Command\n"
              "bash     1  ready  00:00:07         3448  /usr/bin/bash -c echo\n"
              "bash  4711  ready  00:00:07         3448  /usr/bin/bash -c echo\n");
}

TEST(ProcessTable, ItFitsTheTerminal) {
    const ProcessStatistics large = {"00000012031502.000000:000", "5316", "1045932", "132"};
    const Table table = processTable({
        {"2", ProcessInformation{"kthreadd", "", {}, "4", "2"}, small()},
        {"3171",
         ProcessInformation{"nginx", "/usr/sbin/nginx", {"-g", "daemon on; master_process on;"}, "4", "2"},
         small()},
        {"812",
         ProcessInformation{"postgres",
                            "/usr/lib/postgresql/15/bin/postgres",
                            {"-D", "/var/lib/postgresql/15/main", "-c",
                             "config_file=/etc/postgresql/15/main/postgresql.conf"},
                            "4",
                            "3"},
         large},
        {"27", ProcessInformation{"rcu_tasks_rude_kthread", "", {}, "2", "5"}, small()},
        {"30211", ProcessInformation{"sh", "/usr/bin/dash", {"-c", "set -e\nmake\nmake install\n"}, "4", "4"},
         small()},
        {"411", ProcessInformation{"udisksd", "/usr/libexec/udisks2/udisksd", {}, "4", "2"}, std::nullopt},
        {"32767", std::nullopt, small()},
    });
    owbctl_test::expectScreen("processes.80", table.text(80));
    owbctl_test::expectScreen("processes.140", table.text(140));
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

TEST(ProcessTable, AWideTableHasKindsAndAllSizes) {
    const auto wide = [](const std::string& kind) {
        ProcessInformation information = sleeping();
        information.runType = kind;
        return processTable({{"1", information, small()}}, true).text();
    };
    EXPECT_EQ(
        wide("4"),
        "Name  PID  State  Kind         CPU time  Text (kB)  Data (kB)  Stack (kB)  Command\n"
        "bash    1  ready  application  00:00:07       2368        948         132  /usr/bin/bash -c echo\n");
    EXPECT_NE(wide("2").find("  operating system  "), std::string::npos);
    EXPECT_NE(wide("3").find("  device driver  "), std::string::npos);
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
              "Name  PID  State  CPU time  Memory (kB)  Command\n"
              "bash    1  ready  -                   -  /usr/bin/bash -c echo\n"
              "-       2  -      00:00:07         3448  -\n");
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
