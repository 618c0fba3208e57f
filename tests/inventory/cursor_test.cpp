// The walk through the table.
#include "inventory/Inventory.hpp"

#include <climits>
#include <filesystem>

using namespace OpenWBEM;

namespace {

class Cursor : public Inventory {
protected:
    QAV_UnixProcessAPI m_processes;
};

template <class Value>
void expectNothing(const QAV_UnixProcessAPI& processes, int (QAV_UnixProcessAPI::*getter)(Value&) const,
                   const Value& before) {
    Value value = before;
    EXPECT_EQ(0, (processes.*getter)(value));
    EXPECT_TRUE(before == value);
}

// Expects every getter to return 0 and to leave its argument alone.
void expectNothing(const QAV_UnixProcessAPI& processes) {
    using Table = QAV_UnixProcessAPI;
    for (const auto getter :
         {&Table::getHandle, &Table::getName, &Table::getModulePath, &Table::getParentProcessID})
        expectNothing(processes, getter, String("before"));
    for (const auto getter : {&Table::getRunType, &Table::getExecutionState})
        expectNothing<unsigned short>(processes, getter, 4711);
    for (const auto getter : {&Table::getRealUserID, &Table::getProcessGroupID, &Table::getRealText,
                              &Table::getRealData, &Table::getRealStack})
        expectNothing(processes, getter, 4711ULL);
    expectNothing(processes, &Table::getTotalCpuTime, CIMDateTime(UInt64(5000000)));
    expectNothing(processes, &Table::getParameters, Array<String>(2, "before"));
}

TEST_F(Cursor, OfATableThatWasNeverFilledIsOnNothing) {
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
    m_processes.begin();
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
}

TEST_F(Cursor, OfAnEmptyTableFindsNothing) {
    m_processes.init(information);
    m_processes.begin();
    EXPECT_EQ(0, m_processes.hasNext());
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
}

TEST_F(Cursor, IsOnNothingUntilItIsMoved) {
    m_tree.add("7");
    m_processes.init(information);
    expectNothing(m_processes);
    EXPECT_EQ(1, m_processes.hasNext());
    m_processes.begin();
    expectNothing(m_processes);
    EXPECT_EQ(1, m_processes.hasNext());
    m_processes.next();
    EXPECT_EQ("7", recordAt(m_processes).handle);
}

TEST_F(Cursor, BehindTheLastProcessIsOnNothing) {
    m_tree.add("7");
    m_processes.init(information);
    m_processes.begin();
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
}

TEST_F(Cursor, HasAllProcessesInTurn) {
    for (const char* const id : {"7", "8", "9"})
        m_processes.init(information, (m_tree.add(id), id));
    m_processes.begin();
    for (const char* const id : {"7", "8", "9"}) {
        EXPECT_EQ(1, m_processes.hasNext());
        m_processes.next();
        EXPECT_EQ(id, recordAt(m_processes).handle);
    }
    EXPECT_EQ(0, m_processes.hasNext());
}

TEST_F(Cursor, GoesBackToTheBeginning) {
    for (const char* const id : {"7", "8"})
        m_processes.init(information, (m_tree.add(id), id));
    EXPECT_EQ((Texts{"7", "8"}), handlesIn(m_processes));
    EXPECT_EQ((Texts{"7", "8"}), handlesIn(m_processes));
}

TEST_F(Cursor, StaysAtTheEndOfAWalk) {
    m_tree.add("7");
    m_processes.init(information);
    m_processes.begin();
    m_processes.next();
    m_processes.end();
    EXPECT_EQ("7", recordAt(m_processes).handle);
}

TEST_F(Cursor, MayBeMovedFarBeyondTheTable) {
    m_tree.add("7");
    m_processes.init(information);
    m_processes.begin();
    for (int i = 0; i < 3 * USHRT_MAX; ++i) {
        m_processes.next();
        ASSERT_EQ(0, m_processes.hasNext()) << i;
    }
    expectNothing(m_processes);
    EXPECT_EQ(Texts{"7"}, handlesIn(m_processes));
}

TEST_F(Cursor, GivesParametersThatAreTheCallersOwn) {
    MadeProcess process;
    process.cmdline = std::string("prog\0-a\0", 8);
    m_tree.add("7", process);
    m_processes.init(information);
    m_processes.begin();
    m_processes.next();
    Array<String> parameters;
    m_processes.getParameters(parameters);
    parameters[0] = "changed";
    parameters.push_back("more");
    EXPECT_EQ(Texts{"-a"}, recordAt(m_processes).parameters);
}

TEST_F(Cursor, EndsWithThe32768thOfMoreProcesses) {
    m_tree.add("7");
    for (int i = 0; i < 40000; ++i)
        ASSERT_EQ(1, m_processes.internalInit(statistics, "7"));
    int count = 0;
    for (m_processes.begin(); m_processes.hasNext() && count <= 40000; ++count)
        m_processes.next();
    EXPECT_EQ(32768, count);
    EXPECT_EQ("7", recordAt(m_processes).handle);
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    EXPECT_EQ("7", recordAt(m_processes).handle) << "it stays on the last that it reaches";
    m_processes.begin();
    EXPECT_EQ(1, m_processes.hasNext());
}

TEST_F(Cursor, ReachesTheLastOfExactly32768Processes) {
    m_tree.add("7");
    m_tree.add("8");
    for (int i = 0; i < 32767; ++i)
        ASSERT_EQ(1, m_processes.internalInit(statistics, "7"));
    m_processes.internalInit(statistics, "8");
    m_processes.begin();
    for (int i = 0; i < 32768; ++i) {
        ASSERT_EQ(1, m_processes.hasNext()) << i;
        m_processes.next();
    }
    EXPECT_EQ(0, m_processes.hasNext());
    EXPECT_EQ("8", recordAt(m_processes).handle);
}

TEST_F(Cursor, EndsWithThe32768thEntryOfAFolder) {
    m_tree.add("1");
    for (int i = 0; i < 40000; ++i)
        std::filesystem::create_symlink("1", m_tree.path() + "/" + std::to_string(100000 + i));
    m_processes.init(statistics);
    EXPECT_EQ(32768U, handlesIn(m_processes).size());
}

} // namespace
