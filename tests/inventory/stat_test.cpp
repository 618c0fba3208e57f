// The fields of the stat file of a process.
#include "inventory/Inventory.hpp"

#include <cctype>

namespace {

class StatLine : public Inventory {
protected:
    // The record of a process with a stat file.
    Record readStat(const std::string& stat, QAV_UnixProcessAPI::tProcessInfoType type) const {
        m_tree.add("7");
        m_tree.write("7", "stat", stat);
        return read("7", type);
    }
    std::string cpuTime(const std::string& user, const std::string& system) const {
        FakeProcess process;
        process.userTime = user;
        process.systemTime = system;
        return readStat(process.stat("7"), statistics).totalCpuTime;
    }
};

TEST_F(StatLine, GivesNameParentAndStateInOneMode) {
    FakeProcess process;
    process.name = "daemon";
    process.parent = "4711";
    const Record record = readStat(process.stat("7"), information);
    EXPECT_EQ("7", record.handle);
    EXPECT_EQ("daemon", record.name);
    EXPECT_EQ("4711", record.parentProcessID);
    EXPECT_EQ(2, record.executionState);
}

TEST_F(StatLine, GivesNameAndProcessorTimeInTheOther) {
    FakeProcess process;
    process.name = "daemon";
    process.userTime = "250";
    process.systemTime = "50";
    const Record record = readStat(process.stat("7"), statistics);
    EXPECT_EQ("7", record.handle);
    EXPECT_EQ("daemon", record.name);
    EXPECT_EQ("00000000000003.000000:000", record.totalCpuTime);
}

TEST_F(StatLine, EveryLetterHasItsState) {
    for (int letter = 'A'; letter <= 'z'; ++letter) {
        if (!std::isalpha(letter))
            continue;
        FakeProcess process;
        process.state = std::string(1, static_cast<char>(letter));
        unsigned short expected = 0;
        switch (letter) {
        case 'R':
            expected = 3;
            break;
        case 'S':
            expected = 2;
            break;
        case 'D':
            expected = 5;
            break;
        case 'T':
            expected = 4;
            break;
        case 'Z':
            expected = 7;
            break;
        }
        EXPECT_EQ(expected, readStat(process.stat("7"), information).executionState) << process.state;
    }
}

TEST_F(StatLine, ATickIsTenMilliseconds) {
    EXPECT_EQ("00000000000000.000000:000", cpuTime("0", "0"));
    EXPECT_EQ("00000000000000.010000:000", cpuTime("1", "0"));
    EXPECT_EQ("00000000000000.010000:000", cpuTime("0", "1"));
    EXPECT_EQ("00000000000001.000000:000", cpuTime("99", "1"));
    EXPECT_EQ("00000001000000.000000:000", cpuTime("8640000", "0"));
}

TEST_F(StatLine, ProcessorTimesWrapAt64Bits) {
    EXPECT_EQ("00000000000000.010000:000", cpuTime("-1", "2"));
    EXPECT_EQ("00000000000000.000000:000", cpuTime("18446744073709551615", "1"));
    EXPECT_EQ("00000000000000.000000:000", cpuTime("99999999999999999999", "1")) << "counts as the largest";
}

} // namespace
