// Processes that are added to the table by their IDs, and fills that replace the table.
#include "inventory/OwnProcess.hpp"

#include <algorithm>

namespace {

class OneByOne : public OwnProcess {};

TEST_F(OneByOne, EachIsAppended) {
    add(handle(1));
    add(handle());
    EXPECT_EQ((Texts{handle(1), handle()}), handlesIn(m_processes));
}

TEST_F(OneByOne, ThatIsAddedAgainIsInTheTableTwice) {
    add(handle());
    add(handle());
    EXPECT_EQ((Texts{handle(), handle()}), handlesIn(m_processes));
}

TEST_F(OneByOne, ThatDoesNotExistLeavesTheTableUnchanged) {
    add(handle());
    for (const char* const other : {"0", "", " ", "x", "self", "-7", "2147483647"}) {
        EXPECT_EQ(0, m_processes.init(information, other)) << other;
        EXPECT_EQ(0, m_processes.init(statistics, other)) << other;
        EXPECT_EQ(0, m_processes.internalInit(statistics, other)) << other;
    }
    EXPECT_EQ(Texts{handle()}, handlesIn(m_processes));
}

TEST_F(OneByOne, FollowACompleteTable) {
    m_processes.init(statistics);
    add(handle(1));
    const Texts handles = handlesIn(m_processes);
    EXPECT_EQ(1, std::count(handles.begin(), handles.end(), handle()));
    EXPECT_EQ(handle(1), handles.back());
}

TEST_F(OneByOne, AreReplacedByACompleteTable) {
    add(handle(1));
    m_processes.init(statistics);
    m_processes.init(information);
    const Texts handles = handlesIn(m_processes);
    EXPECT_EQ(0, std::count(handles.begin(), handles.end(), handle(1)));
    EXPECT_EQ(1, std::count(handles.begin(), handles.end(), handle()));
}

TEST_F(OneByOne, MayMixTheModes) {
    add(handle(), information);
    add(handle(), statistics);
    const std::vector<Record> records = recordsIn(m_processes);
    ASSERT_EQ(2U, records.size());
    EXPECT_EQ(std::to_string(::getppid()), records[0].parentProcessID);
    EXPECT_EQ(0U, records[0].realText);
    EXPECT_EQ("", records[1].parentProcessID);
    EXPECT_LT(0U, records[1].realText);
}

TEST_F(OneByOne, LeaveTheCursor) {
    add(handle());
    m_processes.begin();
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    add(handle(1));
    EXPECT_EQ(handle(), recordAt(m_processes).handle);
    EXPECT_EQ(1, m_processes.hasNext());
}

TEST_F(OneByOne, MayBeReadWithoutInit) {
    EXPECT_EQ(1, m_processes.internalInit(statistics, handle(1).c_str()));
    EXPECT_EQ(1, m_processes.internalInit(statistics, handle().c_str()));
    EXPECT_EQ((Texts{handle(1), handle()}), handlesIn(m_processes));
}

} // namespace
