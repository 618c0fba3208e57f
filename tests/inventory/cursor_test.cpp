// The iteration over the table.
#include "inventory/OwnProcess.hpp"

#include <climits>

using namespace OpenWBEM;

namespace {

class Cursor : public OwnProcess {};

template <class Value>
void expectNothing(const QAV_UnixProcessAPI& processes, int (QAV_UnixProcessAPI::*getter)(Value&) const,
                   const Value& before) {
    Value value = before;
    EXPECT_EQ(0, (processes.*getter)(value));
    EXPECT_TRUE(before == value);
}

// Expects every getter to return 0 and to leave its argument unchanged.
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

TEST_F(Cursor, OfANewTableIsOnNoProcess) {
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
    m_processes.begin();
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
}

TEST_F(Cursor, OfAnEmptyTableFindsNoProcess) {
    m_processes.init(information, "none");
    m_processes.begin();
    EXPECT_EQ(0, m_processes.hasNext());
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
}

TEST_F(Cursor, IsOnNoProcessUntilItMoves) {
    add(handle());
    expectNothing(m_processes);
    EXPECT_EQ(1, m_processes.hasNext());
    m_processes.begin();
    expectNothing(m_processes);
    EXPECT_EQ(1, m_processes.hasNext());
    m_processes.next();
    EXPECT_EQ(handle(), recordAt(m_processes).handle);
}

TEST_F(Cursor, AfterTheLastProcessIsOnNoProcess) {
    add(handle());
    m_processes.begin();
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    expectNothing(m_processes);
}

TEST_F(Cursor, VisitsAllProcessesInOrder) {
    for (const std::size_t number : {0U, 1U, 2U})
        add(handle(number));
    m_processes.begin();
    for (const std::size_t number : {0U, 1U, 2U}) {
        EXPECT_EQ(1, m_processes.hasNext());
        m_processes.next();
        EXPECT_EQ(handle(number), recordAt(m_processes).handle);
    }
    EXPECT_EQ(0, m_processes.hasNext());
}

TEST_F(Cursor, ReturnsToTheBeginning) {
    add(handle());
    add(handle(1));
    EXPECT_EQ((Texts{handle(), handle(1)}), handlesIn(m_processes));
    EXPECT_EQ((Texts{handle(), handle(1)}), handlesIn(m_processes));
}

TEST_F(Cursor, StaysAtTheEndOfAnIteration) {
    add(handle());
    m_processes.begin();
    m_processes.next();
    m_processes.end();
    EXPECT_EQ(handle(), recordAt(m_processes).handle);
}

TEST_F(Cursor, MayMoveFarBeyondTheTable) {
    add(handle());
    m_processes.begin();
    for (int i = 0; i < 3 * USHRT_MAX; ++i) {
        m_processes.next();
        ASSERT_EQ(0, m_processes.hasNext()) << i;
    }
    expectNothing(m_processes);
    EXPECT_EQ(Texts{handle()}, handlesIn(m_processes));
}

TEST_F(Cursor, ReturnsACopyOfTheParameters) {
    add(handle());
    m_processes.begin();
    m_processes.next();
    const Texts before = recordAt(m_processes).parameters;
    Array<String> parameters;
    m_processes.getParameters(parameters);
    parameters.push_back("more");
    EXPECT_EQ(before, recordAt(m_processes).parameters);
}

TEST_F(Cursor, EndsWithThe32768thProcess) {
    const String own = handle().c_str();
    for (int i = 0; i < 32767; ++i)
        ASSERT_EQ(1, m_processes.internalInit(statistics, own));
    add(handle(1));
    for (const int more : {0, 1, 2}) { // processes that the cursor does not reach
        int count = 0;
        for (m_processes.begin(); m_processes.hasNext() && count <= 32768; ++count)
            m_processes.next();
        EXPECT_EQ(32768, count) << more;
        EXPECT_EQ(handle(1), recordAt(m_processes).handle) << more;
        m_processes.next();
        EXPECT_EQ(0, m_processes.hasNext()) << more;
        EXPECT_EQ(handle(1), recordAt(m_processes).handle) << "it stays on the last reachable process";
        add(handle(2));
    }
    m_processes.begin();
    EXPECT_EQ(1, m_processes.hasNext());
}

} // namespace
