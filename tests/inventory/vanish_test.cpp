// Processes that end while they are read. A pipe instead of a file blocks the read until the test has removed
// the files that follow.
#include "inventory/Inventory.hpp"
#include "inventory/Pipe.hpp"

#include <functional>

namespace {

class Vanishing : public Inventory {
protected:
    Vanishing() { m_tree.add("7"); }

    // Reads the process; a file blocks until `meanwhile` returns. Returns whether the process was found.
    bool read(const std::string& name, const std::string& content, QAV_UnixProcessAPI::tProcessInfoType type,
              const std::function<void()>& meanwhile) {
        m_tree.remove("7", name);
        const Pipe file(m_tree.file("7", name), {content}, meanwhile);
        return inventory::readProcess(m_sources, type, "7", m_processes);
    }
    std::function<void()> end() const {
        return [this] { m_tree.remove("7"); };
    }

    OpenWBEM::Array<inventory::Process> m_processes;
    const FakeProcess m_process;
};

TEST_F(Vanishing, APipeIsReadLikeAFile) {
    EXPECT_TRUE(read("stat", m_process.stat("7"), information, [] {}));
    EXPECT_EQ("prog", recordOf(m_processes[0]).name);
}

TEST_F(Vanishing, AfterItsStatFileItIsLeftOut) {
    EXPECT_FALSE(read("stat", m_process.stat("7"), information, end()));
    EXPECT_EQ(0U, m_processes.size());
}

TEST_F(Vanishing, AfterItsStatFileItIsLeftOutOfTheStatisticsToo) {
    EXPECT_FALSE(read("stat", m_process.stat("7"), statistics, end()));
    EXPECT_EQ(0U, m_processes.size());
}

TEST_F(Vanishing, AfterItsCommandLineItIsLeftOut) {
    EXPECT_FALSE(read("cmdline", m_process.cmdline, information, end()));
    EXPECT_EQ(0U, m_processes.size());
}

TEST_F(Vanishing, WithItsProgramItLosesThePathOnly) {
    EXPECT_TRUE(read("cmdline", m_process.cmdline, information, [this] { m_tree.remove("7", "exe"); }));
    EXPECT_EQ("", recordOf(m_processes[0]).modulePath);
}

TEST_F(Vanishing, WhileItsProgramIsClassifiedItIsLeftOut) {
    m_sources.runType = [this](const OpenWBEM::String&) {
        m_tree.remove("7");
        return 4;
    };
    EXPECT_FALSE(isFound("7", information));
}

TEST_F(Vanishing, WhileItsStatusIsReadItIsKept) {
    EXPECT_TRUE(read("status", m_process.status, information, end()));
    EXPECT_EQ(1000U, recordOf(m_processes[0]).realUserID);
}

TEST_F(Vanishing, AStatusThatEndsEarlyGivesItsFirstFields) {
    EXPECT_TRUE(read("status", "Uid:\t1\t2\nGi", information, end()));
    EXPECT_EQ(2U, recordOf(m_processes[0]).realUserID);
    EXPECT_EQ(0U, recordOf(m_processes[0]).processGroupID);
}

TEST_F(Vanishing, DoesNotEndTheReadOfTheOthers) {
    m_tree.add("8");
    m_tree.add("9");
    m_tree.remove("7", "stat");
    const Pipe file(m_tree.file("7", "stat"), {m_process.stat("7")}, end());
    EXPECT_EQ((Texts{"8", "9"}), found(information));
}

} // namespace
