// Processes that end while they are read. A pipe in the place of a file holds the reading up until the test
// has removed what comes behind it.
#include "inventory/Inventory.hpp"
#include "inventory/Pipe.hpp"

#include <functional>

namespace {

class Vanishing : public Inventory {
protected:
    Vanishing() { m_tree.add("7"); }

    // Reads the process with a file held up while something happens; returns what init() does.
    int read(const std::string& name, const std::string& content, QAV_UnixProcessAPI::tProcessInfoType type,
             const std::function<void()>& meanwhile) {
        m_tree.remove("7", name);
        const Pipe file(m_tree.file("7", name), {content}, meanwhile);
        return m_processes.init(type, "7");
    }
    std::function<void()> end() const {
        return [this] { m_tree.remove("7"); };
    }

    QAV_UnixProcessAPI m_processes;
    const MadeProcess m_process;
};

TEST_F(Vanishing, APipeInThePlaceOfAFileIsReadLikeAFile) {
    EXPECT_EQ(1, read("stat", m_process.stat("7"), information, [] {}));
    EXPECT_EQ("prog", recordsIn(m_processes).at(0).name);
}

TEST_F(Vanishing, BehindItsStatFileItIsLeftOut) {
    EXPECT_EQ(0, read("stat", m_process.stat("7"), information, end()));
    EXPECT_EQ(0U, recordsIn(m_processes).size());
}

TEST_F(Vanishing, BehindItsStatFileItIsLeftOutOfTheStatisticsToo) {
    EXPECT_EQ(0, read("stat", m_process.stat("7"), statistics, end()));
    EXPECT_EQ(0U, recordsIn(m_processes).size());
}

TEST_F(Vanishing, BehindItsCommandLineItIsLeftOut) {
    EXPECT_EQ(0, read("cmdline", m_process.cmdline, information, end()));
    EXPECT_EQ(0U, recordsIn(m_processes).size());
}

TEST_F(Vanishing, WithItsProgramItLosesThePathOnly) {
    EXPECT_EQ(1, read("cmdline", m_process.cmdline, information, [this] { m_tree.remove("7", "exe"); }));
    EXPECT_EQ("", recordsIn(m_processes).at(0).modulePath);
}

TEST_F(Vanishing, WhileItsProgramIsClassifiedItIsLeftOut) {
    setTool("rm -r '" + m_tree.path() + "/7'\n");
    EXPECT_EQ(0, m_processes.init(information, "7"));
    EXPECT_EQ(0U, recordsIn(m_processes).size());
}

TEST_F(Vanishing, WhileItsStatusIsReadItIsKept) {
    EXPECT_EQ(1, read("status", m_process.status, information, end()));
    EXPECT_EQ(1000U, recordsIn(m_processes).at(0).realUserID);
}

TEST_F(Vanishing, AStatusThatEndsEarlyGivesWhatItHas) {
    EXPECT_EQ(1, read("status", "Uid:\t1\t2\nGi", information, end()));
    EXPECT_EQ(2U, recordsIn(m_processes).at(0).realUserID);
    EXPECT_EQ(0U, recordsIn(m_processes).at(0).processGroupID);
}

TEST_F(Vanishing, DoesNotEndTheReadingOfTheOthers) {
    m_tree.add("8");
    m_tree.add("9");
    m_tree.remove("7", "stat");
    const Pipe file(m_tree.file("7", "stat"), {m_process.stat("7")}, end());
    EXPECT_EQ((Texts{"8", "9"}), found(information));
}

} // namespace
