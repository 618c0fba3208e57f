// How often the software inventory is run, and what becomes of its failures.
#include "inventory/Inventory.hpp"

#include <algorithm>
#include <filesystem>
#include <sys/resource.h>

namespace {

class Tool : public Inventory {
protected:
    Tool() {
        setTool("echo run >> '" + m_log + "'\necho prog a b Driver\n");
        m_tree.add("7");
        m_tree.add("8");
    }
    // Number of times that the tool has run.
    long runs() const {
        if (!std::filesystem::exists(m_log))
            return 0;
        const std::string log = support::readFile(m_log);
        return std::count(log.begin(), log.end(), '\n');
    }
    unsigned short typeOf(const std::string& id) const { return read(id, information).runType; }

    const std::string m_log = m_folder.file("log");
    QAV_UnixProcessAPI m_processes;
};

TEST_F(Tool, RunsOnceForAllProcesses) {
    m_processes.init(information);
    EXPECT_EQ(1, runs());
    const std::vector<Record> records = recordsIn(m_processes);
    ASSERT_EQ(2U, records.size());
    EXPECT_EQ(3, records[0].runType);
    EXPECT_EQ(3, records[1].runType);
}

TEST_F(Tool, RunsAgainForEveryFill) {
    m_processes.init(information);
    m_processes.init(information);
    EXPECT_EQ(2, runs());
    EXPECT_EQ(3, recordsIn(m_processes).at(1).runType);
    m_processes.init(information, "7");
    m_processes.init(information, "7");
    EXPECT_EQ(4, runs());
    EXPECT_EQ(3, recordsIn(m_processes).at(3).runType);
}

TEST_F(Tool, IsReadAfreshByEveryFill) {
    m_processes.init(information, "7");
    setToolOutput("prog a b Oper\n");
    m_processes.init(information, "7");
    EXPECT_EQ(2, recordsIn(m_processes).at(1).runType);
    setToolOutput("prog a b Driver\n");
    m_processes.init(information);
    EXPECT_EQ(3, recordsIn(m_processes).at(0).runType);
}

TEST_F(Tool, DoesNotRunForStatistics) {
    m_processes.init(statistics);
    m_processes.init(statistics, "7");
    EXPECT_EQ(3U, recordsIn(m_processes).size());
    EXPECT_EQ(0, runs());
}

TEST_F(Tool, DoesNotRunWithoutAProcess) {
    m_tree.remove("7");
    m_tree.remove("8", "stat");
    m_processes.init(information);
    EXPECT_EQ(0, m_processes.init(information, "9"));
    EXPECT_EQ(0, runs());
}

TEST_F(Tool, DoesNotRunForAProcessWithoutACommandLine) {
    m_tree.remove("7", "cmdline");
    EXPECT_EQ(0, m_processes.init(information, "7"));
    EXPECT_EQ(0, runs());
}

TEST_F(Tool, HasRunBeforeTheStatusIsRead) {
    m_tree.remove("7", "status");
    EXPECT_EQ(0, m_processes.init(information, "7"));
    EXPECT_EQ(1, runs());
}

TEST_F(Tool, IsNotRunAgainWhenItFailed) {
    setTool("echo run >> '" + m_log + "'\nexit 1\n");
    m_processes.init(information);
    EXPECT_EQ(1, runs());
    EXPECT_EQ(4, recordsIn(m_processes).at(0).runType);
    EXPECT_EQ(4, recordsIn(m_processes).at(1).runType);
}

TEST_F(Tool, IsNotRunAgainWhenItCouldNotBeStarted) {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit none = {0, limit.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none); // no pipe to it can be made
    EXPECT_EQ(4, m_processes.determineSWType("prog"));
    ::setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_EQ(4, m_processes.determineSWType("prog"));
    EXPECT_EQ(0, runs());
    m_processes.init(information, "7");
    EXPECT_EQ(1, runs());
}

TEST_F(Tool, StaysHeldWhileProcessesAreReadWithoutInit) {
    EXPECT_EQ(1, m_processes.internalInit(information, "7"));
    EXPECT_EQ(1, m_processes.internalInit(information, "8"));
    EXPECT_EQ(3, m_processes.determineSWType("prog"));
    EXPECT_EQ(1, runs());
    m_processes.init(information, "7");
    EXPECT_EQ(2, runs());
}

TEST_F(Tool, IsNotRunBehindAFill) {
    m_processes.init(information);
    EXPECT_EQ(4, m_processes.determineSWType("prog")) << "what it printed is not held any more";
    EXPECT_EQ(1, runs());
}

TEST_F(Tool, ThatIsMissingMakesEverythingAnApplication) {
    std::filesystem::remove(m_folder.file("softinv"));
    EXPECT_EQ(4, typeOf("7"));
}

TEST_F(Tool, ThatMayNotBeRunMakesEverythingAnApplication) {
    std::filesystem::permissions(m_folder.file("softinv"), std::filesystem::perms::owner_read);
    EXPECT_EQ(4, typeOf("7"));
}

TEST_F(Tool, ThatPrintsNothingMakesEverythingAnApplication) {
    setTool("exit 0\n");
    EXPECT_EQ(4, typeOf("7"));
}

TEST_F(Tool, ThatFailsIsBelievedAllTheSame) {
    setTool("echo prog a b Driver\nexit 1\n");
    EXPECT_EQ(3, typeOf("7"));
    setTool("echo prog a b Driver\nkill -KILL $$\n");
    EXPECT_EQ(3, typeOf("7"));
}

TEST_F(Tool, HasAnEmptyInput) {
    setTool("read line && echo prog a b Driver || echo prog a b Oper\n");
    EXPECT_EQ(2, typeOf("7"));
}

TEST_F(Tool, ErrorOutputDoesNotCount) {
    setTool("echo prog a b Driver >&2\n");
    EXPECT_EQ(4, typeOf("7"));
}

} // namespace
