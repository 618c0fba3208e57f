// Processes of this host in the table, compared with an independent reading of /proc.
#include "StartedProcess.hpp"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using Table = QAV_UnixProcessAPI;

Record readOne(const std::string& id, Table::tProcessInfoType type) {
    Table processes;
    EXPECT_EQ(1, processes.init(type, id.c_str()));
    const std::vector<Record> records = recordsIn(processes);
    return records.empty() ? Record() : records.front();
}

// From the table of all processes.
Record find(const std::string& id, Table::tProcessInfoType type) {
    Table processes;
    processes.init(type);
    const std::vector<Record> records = recordsIn(processes);
    const auto isWanted = [&](const Record& record) { return record.handle == id; };
    EXPECT_EQ(1, std::count_if(records.begin(), records.end(), isWanted)) << id;
    const auto found = std::find_if(records.begin(), records.end(), isWanted);
    return found == records.end() ? Record() : *found;
}

void expectInformation(const Record& expected, const Record& record) {
    EXPECT_EQ(expected.handle, record.handle);
    EXPECT_EQ(expected.name, record.name);
    EXPECT_EQ(expected.modulePath, record.modulePath);
    EXPECT_EQ(expected.parameters, record.parameters);
    EXPECT_EQ(expected.executionState, record.executionState);
    EXPECT_EQ(expected.parentProcessID, record.parentProcessID);
    EXPECT_EQ(expected.realUserID, record.realUserID);
    EXPECT_EQ(expected.processGroupID, record.processGroupID);
    EXPECT_LE(2, record.runType);
    EXPECT_GE(4, record.runType);
}

void expectStatistics(const Record& expected, const Record& record) {
    EXPECT_EQ(expected.handle, record.handle);
    EXPECT_EQ(expected.name, record.name);
    EXPECT_EQ(expected.totalCpuTime, record.totalCpuTime);
    EXPECT_EQ(expected.realText, record.realText);
    EXPECT_EQ(expected.realData, record.realData);
    EXPECT_EQ(expected.realStack, record.realStack);
}

// An idle process, in both modes, read alone and with all others.
void expectInTable(const Record& expected) {
    expectInformation(expected, readOne(expected.handle, Table::eProcessInformation));
    expectInformation(expected, find(expected.handle, Table::eProcessInformation));
    expectStatistics(expected, readOne(expected.handle, Table::eStatisticalInformation));
    expectStatistics(expected, find(expected.handle, Table::eStatisticalInformation));
}

TEST(ProcessesOfThisHost, ASleepingOne) {
    const StartedProcess process(StartedProcess::sleeper("(odd name"));
    const Record expected = process.when("(odd name", 'S');
    EXPECT_EQ(std::to_string(::getpid()), expected.parentProcessID);
    EXPECT_LT(0U, expected.realText);
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, AStoppedOne) {
    const StartedProcess process(StartedProcess::sleeper("stopped"));
    process.when("stopped", 'S');
    ::kill(process.pid(), SIGSTOP);
    const Record expected = process.when("stopped", 'T');
    EXPECT_EQ(4, expected.executionState);
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, AZombie) {
    const StartedProcess process([] { ::prctl(PR_SET_NAME, "zombie"); });
    siginfo_t info{};
    ASSERT_EQ(0, ::waitid(P_PID, static_cast<id_t>(process.pid()), &info, WEXITED | WNOWAIT));
    const Record expected = process.when("zombie", 'Z');
    EXPECT_EQ(7, expected.executionState);
    EXPECT_EQ("", expected.modulePath);
    EXPECT_EQ(0U, expected.realText);
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, OneWithParameters) {
    const StartedProcess process(StartedProcess::program({"odd program", "9999", "9999", "9999"}));
    const Record expected = process.when("sleep", 'S');
    EXPECT_EQ((std::vector<std::string>{"9999", "9999", "9999"}), expected.parameters);
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, OneWithMoreParametersThanAreRead) {
    std::vector<std::string> words{"program"};
    for (int i = 0; i < 200; ++i)
        words.push_back("9999");
    const StartedProcess process(StartedProcess::program(words));
    const Record expected = process.when("sleep", 'S');
    EXPECT_EQ(101U, expected.parameters.size()) << "511 bytes: 8, 100 times 5, 3";
    EXPECT_EQ("999", expected.parameters.back());
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, OneWithALineEndInItsParameters) {
    const StartedProcess process(StartedProcess::program({"program", "9999", "\n9999"}));
    const Record expected = process.when("sleep", 'S');
    EXPECT_EQ((std::vector<std::string>{"9999", "\n"}), expected.parameters);
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, OneWithAnEmptyName) {
    const StartedProcess process(StartedProcess::program({"", "9999"}));
    const Record expected = process.when("sleep", 'S');
    EXPECT_EQ(0U, expected.parameters.size());
    expectInTable(expected);
}

TEST(ProcessesOfThisHost, OneWithAClosingParenthesisInItsNameIsLeftOut) {
    const StartedProcess process(StartedProcess::sleeper("(sd-pam)"));
    process.when("(sd-pam)", 'S');
    Table processes;
    EXPECT_EQ(0, processes.init(Table::eProcessInformation, process.id().c_str()));
    EXPECT_EQ(0, processes.init(Table::eStatisticalInformation, process.id().c_str()));
}

TEST(ProcessesOfThisHost, OneThatHasEndedIsLeftOut) {
    std::string id;
    {
        const StartedProcess process(StartedProcess::sleeper("short"));
        id = process.id();
    }
    Table processes;
    EXPECT_EQ(0, processes.init(Table::eProcessInformation, id.c_str()));
}

TEST(ProcessesOfThisHost, TheTestItselfIsRunning) {
    const Record expected = KernelView(::getpid()).record();
    const Record record = find(expected.handle, Table::eProcessInformation);
    EXPECT_EQ(3, record.executionState);
    expectInformation(expected, record);
    EXPECT_EQ(static_cast<unsigned long long>(::geteuid()), record.realUserID);
    EXPECT_EQ(static_cast<unsigned long long>(::getegid()), record.processGroupID);
    const std::string before = KernelView(::getpid()).record().totalCpuTime;
    const std::string time = find(expected.handle, Table::eStatisticalInformation).totalCpuTime;
    EXPECT_LE(before, time);
    EXPECT_GE(KernelView(::getpid()).record().totalCpuTime, time);
}

TEST(ProcessesOfThisHost, AllThatKeepRunningAreInTheTableOnce) {
    for (const auto type : {Table::eProcessInformation, Table::eStatisticalInformation}) {
        const std::set<std::string> before = kernelProcesses();
        Table processes;
        processes.init(type);
        const std::set<std::string> after = kernelProcesses();
        std::multiset<std::string> found;
        for (const Record& record : recordsIn(processes))
            found.insert(record.handle);
        for (const std::string& id : before)
            EXPECT_LE(after.count(id), found.count(id)) << id;
        EXPECT_EQ(found.size(), std::set<std::string>(found.begin(), found.end()).size());
    }
}

} // namespace
