// Processes that are added to the table by their IDs.
#include "inventory/Inventory.hpp"

namespace {

class OneByOne : public Inventory {
protected:
    OneByOne() {
        m_tree.add("7");
        m_tree.add("8");
    }

    QAV_UnixProcessAPI m_processes;
};

TEST_F(OneByOne, EachIsAppended) {
    EXPECT_EQ(1, m_processes.init(information, "8"));
    EXPECT_EQ(1, m_processes.init(information, "7"));
    EXPECT_EQ((Texts{"8", "7"}), handlesIn(m_processes));
}

TEST_F(OneByOne, ThatIsAddedAgainIsThereTwice) {
    EXPECT_EQ(1, m_processes.init(information, "7"));
    EXPECT_EQ(1, m_processes.init(information, "7"));
    EXPECT_EQ((Texts{"7", "7"}), handlesIn(m_processes));
}

TEST_F(OneByOne, ThatDoesNotExistLeavesTheTableAsItWas) {
    m_processes.init(information, "7");
    for (const char* const handle : {"9", "0", "", " ", "x", "self", "-7", "77"}) {
        EXPECT_EQ(0, m_processes.init(information, handle)) << handle;
        EXPECT_EQ(0, m_processes.init(statistics, handle)) << handle;
    }
    EXPECT_EQ(Texts{"7"}, handlesIn(m_processes));
}

TEST_F(OneByOne, ThatIsNotReadWholeLeavesTheTableAsItWas) {
    m_tree.remove("8", "status");
    EXPECT_EQ(0, m_processes.init(information, "8"));
    EXPECT_EQ(0, m_processes.init(statistics, "8"));
    EXPECT_EQ(Texts{}, handlesIn(m_processes));
}

TEST_F(OneByOne, ComeBehindAWholeTable) {
    m_tree.remove("8");
    m_processes.init(information);
    m_tree.add("9");
    EXPECT_EQ(1, m_processes.init(information, "9"));
    EXPECT_EQ((Texts{"7", "9"}), handlesIn(m_processes));
}

TEST_F(OneByOne, MayMixTheModes) {
    EXPECT_EQ(1, m_processes.init(information, "7"));
    EXPECT_EQ(1, m_processes.init(statistics, "7"));
    const std::vector<Record> records = recordsIn(m_processes);
    ASSERT_EQ(2U, records.size());
    EXPECT_EQ("1", records[0].parentProcessID);
    EXPECT_EQ(0U, records[0].realText);
    EXPECT_EQ("", records[1].parentProcessID);
    EXPECT_EQ(1600U, records[1].realText);
}

TEST_F(OneByOne, LeaveTheCursor) {
    m_processes.init(information, "7");
    m_processes.begin();
    m_processes.next();
    EXPECT_EQ(0, m_processes.hasNext());
    m_processes.init(information, "8");
    EXPECT_EQ("7", recordAt(m_processes).handle);
    EXPECT_EQ(1, m_processes.hasNext());
}

TEST_F(OneByOne, MayBeReadWithoutInit) {
    EXPECT_EQ(1, m_processes.internalInit(statistics, "7"));
    EXPECT_EQ(0, m_processes.internalInit(statistics, "9"));
    EXPECT_EQ(1, m_processes.internalInit(statistics, "8"));
    EXPECT_EQ((Texts{"7", "8"}), handlesIn(m_processes));
}

} // namespace
