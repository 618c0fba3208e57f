// When the program of the software inventory runs, and how long its output is kept.
#include "inventory/OwnProcess.hpp"
#include "inventory/SoftwareProgram.hpp"

#include "support/TempDir.hpp"

namespace {

class Tool : public OwnProcess {
protected:
    Tool() {
        m_program = SoftwareProgram();
        print("Driver");
    }
    // Sets the run type that the program prints for this process.
    void print(const std::string& kind) { m_program.lines = {name() + " a b " + kind}; }

    static std::string name() {
        std::string line = support::readFile("/proc/self/comm");
        line.pop_back();
        return line;
    }
    unsigned short typeOfLast() { return recordsIn(m_processes).back().runType; }
    // The run type of this process in a table of all.
    unsigned short ownType() {
        for (const Record& record : recordsIn(m_processes))
            if (record.handle == handle())
                return record.runType;
        return 0;
    }

    SoftwareProgram& m_program = SoftwareProgram::instance();
};

TEST_F(Tool, RunsWithoutInputAndOnlyForItsOutput) {
    add(handle(), information);
    EXPECT_EQ("/kq/bin/softinv", m_program.command);
    EXPECT_FALSE(m_program.hasMoreThanOutput);
}

TEST_F(Tool, RunsOnceForAllProcesses) {
    m_processes.init(information);
    EXPECT_EQ(1, m_program.runs);
    EXPECT_LT(1U, recordsIn(m_processes).size());
    EXPECT_EQ(3, ownType());
}

TEST_F(Tool, RunsAgainForEveryFill) {
    m_processes.init(information);
    m_processes.init(information);
    EXPECT_EQ(2, m_program.runs);
    EXPECT_EQ(3, ownType());
    add(handle(), information);
    add(handle(), information);
    EXPECT_EQ(4, m_program.runs);
    EXPECT_EQ(3, typeOfLast());
}

TEST_F(Tool, IsReadAgainByEveryFill) {
    add(handle(), information);
    print("Oper");
    add(handle(), information);
    EXPECT_EQ(2, typeOfLast());
    print("Driver");
    m_processes.init(information);
    EXPECT_EQ(3, ownType());
}

TEST_F(Tool, DoesNotRunForStatistics) {
    m_processes.init(statistics);
    add(handle(), statistics);
    EXPECT_EQ(0, m_program.runs);
}

TEST_F(Tool, DoesNotRunWithoutAProcess) {
    EXPECT_EQ(0, m_processes.init(information, "none"));
    EXPECT_EQ(0, m_program.runs);
}

TEST_F(Tool, DoesNotRunAgainAfterItFailedToRun) {
    m_program.isMissing = true;
    EXPECT_EQ(4, m_processes.determineSWType(name().c_str()));
    m_program.isMissing = false;
    EXPECT_EQ(4, m_processes.determineSWType(name().c_str()));
    EXPECT_EQ(1, m_program.runs);
    add(handle(), information);
    EXPECT_EQ(2, m_program.runs);
    EXPECT_EQ(3, typeOfLast());
}

TEST_F(Tool, WithoutOutputMakesEveryProgramAnApplication) {
    m_program.lines.clear();
    add(handle(), information);
    EXPECT_EQ(4, typeOfLast());
}

TEST_F(Tool, OutputIsKeptForProcessesReadWithoutInit) {
    EXPECT_EQ(1, m_processes.internalInit(information, handle().c_str()));
    EXPECT_EQ(1, m_processes.internalInit(information, handle(1).c_str()));
    EXPECT_EQ(3, m_processes.determineSWType(name().c_str()));
    EXPECT_EQ(1, m_program.runs);
    add(handle(), information);
    EXPECT_EQ(2, m_program.runs);
}

TEST_F(Tool, DoesNotRunAfterAFill) {
    add(handle(), information);
    EXPECT_EQ(4, m_processes.determineSWType(name().c_str())) << "the fill has discarded the output";
    EXPECT_EQ(1, m_program.runs);
    m_processes.init(information);
    EXPECT_EQ(4, m_processes.determineSWType(name().c_str()));
    EXPECT_EQ(2, m_program.runs);
}

} // namespace
