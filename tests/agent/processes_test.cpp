#include "agent/Processes.hpp"

#include <gtest/gtest.h>

using namespace agent;

namespace {

Process process(const std::string& name, const std::string& handle, const std::string& state = "2") {
    return {handle, ProcessInformation{name, "", {}, "4", state},
            ProcessStatistics{"00000000000000.000000:000", "1", "1", "1"}};
}

std::string sorted(std::vector<Process> processes, ProcessOrder order) {
    sort(processes, order);
    std::string handles;
    for (const Process& each : processes)
        handles += (handles.empty() ? "" : " ") + each.handle;
    return handles;
}

} // namespace

TEST(Processes, AreSortedByNameAndThenByNumber) {
    EXPECT_EQ(sorted({process("sh", "10"), process("init", "1"), process("SH", "9"), process("bash", "77")},
                     ProcessOrder::name),
              "77 1 9 10");
}

TEST(Processes, AreSortedByNumber) {
    EXPECT_EQ(sorted({process("a", "10"), process("b", "9"), process("c", "1000")}, ProcessOrder::handle),
              "9 10 1000");
}

TEST(Processes, AreSortedByStateAndThenByName) {
    EXPECT_EQ(
        sorted({process("b", "1", "3"), process("a", "2", "3"), process("z", "3", "2")}, ProcessOrder::state),
        "3 2 1");
}

TEST(Processes, TheMostProcessorTimeComesFirst) {
    Process busy = process("b", "2");
    busy.statistics->cpuTime = "00000001000000.000000:000";
    Process started = process("c", "3");
    started.statistics->cpuTime = "00000000235959.000000:000";
    EXPECT_EQ(sorted({process("a", "1"), started, busy}, ProcessOrder::cpuTime), "2 3 1");
}

TEST(Processes, TheLargestComesFirst) {
    Process large = process("b", "2");
    large.statistics->data = "4294967295";
    EXPECT_EQ(large.memory(), 4294967297u);
    EXPECT_EQ(sorted({process("a", "1"), large}, ProcessOrder::memory), "2 1");
}

TEST(Processes, AProcessWithoutSizesComesLast) {
    Process unknown = process("a", "1");
    unknown.statistics.reset();
    EXPECT_EQ(unknown.memory(), 0u);
    EXPECT_FALSE(unknown.isComplete());
    EXPECT_EQ(sorted({unknown, process("b", "2")}, ProcessOrder::memory), "2 1");
    EXPECT_EQ(sorted({unknown, process("b", "2")}, ProcessOrder::cpuTime), "2 1");
}
