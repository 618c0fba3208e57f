// Names of processes in the stat file, and their effect on the fields after them.
#include "inventory/Inventory.hpp"

namespace {

class ProcessName : public Inventory {
protected:
    void setStat(const std::string& stat) const {
        m_tree.add("7");
        m_tree.write("7", "stat", stat);
    }
    // The name of a process that has a name in its stat file.
    std::string nameOf(const std::string& name) const {
        FakeProcess process;
        process.name = name;
        setStat(process.stat("7"));
        const std::string result = read("7", information).name;
        EXPECT_EQ(result, read("7", statistics).name);
        return result;
    }
    bool isNamedProcessFound(const std::string& name) const {
        FakeProcess process;
        process.name = name;
        setStat(process.stat("7"));
        const bool result = isFound("7", information);
        EXPECT_EQ(result, isFound("7", statistics)) << name;
        return result;
    }
};

TEST_F(ProcessName, MayContainAnythingButAClosingParenthesis) {
    for (const char* const name :
         {"a", "two words", " ", " before", "after ", "tab\there", "kworker/0:1H-kblockd", "(", "((", "a(b",
          "\"", "\\", "-1", "7 (8", "\xc3\xa4\xff\x01"})
        EXPECT_EQ(name, nameOf(name));
}

TEST_F(ProcessName, WithAClosingParenthesisLeavesTheProcessOut) {
    for (const char* const name :
         {"(sd-pam)", ")", "))", ") ", ")a", "a)", "a)b", "ab)", " )", "()", "(a)b", "a) b", "a) b c"})
        EXPECT_FALSE(isNamedProcessFound(name)) << name;
}

TEST_F(ProcessName, ThatLooksLikeFieldsAfterItsParenthesisIsReadAsFields) {
    FakeProcess process;
    process.name = "x) R 5";
    process.userTime = "250";
    process.systemTime = "50";
    setStat(process.stat("7"));
    const Record record = read("7", information);
    EXPECT_EQ("x", record.name);
    EXPECT_EQ("5", record.parentProcessID);
    EXPECT_EQ(3, record.executionState);
    // Two words, ")" and "S", shift the fields: 13 and 14 are read as the times.
    EXPECT_EQ("00000000000000.270000:000", read("7", statistics).totalCpuTime);
}

TEST_F(ProcessName, WithAllFieldsAfterItsParenthesisReplacesThem) {
    FakeProcess process;
    process.name = "x) Z 5 1 2 3 4 5 6 7 8 9 300 200 ";
    setStat(process.stat("7"));
    EXPECT_EQ("5", read("7", information).parentProcessID);
    EXPECT_EQ(7, read("7", information).executionState);
    EXPECT_EQ("00000000000005.000000:000", read("7", statistics).totalCpuTime);
}

TEST_F(ProcessName, ThatIsEmptyLeavesTheProcessOut) {
    EXPECT_FALSE(isNamedProcessFound(""));
}

TEST_F(ProcessName, IsReadCompletelyAtAnyLength) {
    for (const std::size_t size : {15U, 63U, 64U, 65U, 200U, 400U})
        EXPECT_EQ(std::string(size, 'x'), nameOf(std::string(size, 'x'))) << size;
}

TEST_F(ProcessName, WithALineEndLeavesTheProcessOut) {
    EXPECT_FALSE(isNamedProcessFound("a\nb"));
}

TEST_F(ProcessName, IsBetweenParentheses) {
    const std::string fields = "S 1 1 1 0 -1 4 0 0 0 0 250 50 0\n";
    setStat("7 prog " + fields);
    EXPECT_FALSE(isFound("7", information));
    setStat("7 prog) " + fields);
    EXPECT_FALSE(isFound("7", information));
    setStat("7 (prog " + fields);
    EXPECT_FALSE(isFound("7", information));
}

} // namespace
