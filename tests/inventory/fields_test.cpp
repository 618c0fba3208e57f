// Stat files that differ from those of the kernel.
#include "inventory/Inventory.hpp"

namespace {

class StatFields : public Inventory {
protected:
    // Whether a process with a stat file is found, in both modes alike.
    bool isTaken(const std::string& stat) const {
        m_tree.add("7");
        m_tree.write("7", "stat", stat);
        const bool result = isFound("7", information);
        EXPECT_EQ(result, isFound("7", statistics)) << stat;
        return result;
    }
    std::string cpuTime() const { return read("7", statistics).totalCpuTime; }
};

TEST_F(StatFields, AreRequiredUpToTheSystemTime) {
    const std::string line = "7 (prog) S 1 10 11 0 -1 41 12 13 14 15 250 50";
    for (std::size_t end = line.find(' '); end != std::string::npos; end = line.find(' ', end + 1)) {
        EXPECT_FALSE(isTaken(line.substr(0, end))) << end;
        EXPECT_FALSE(isTaken(line.substr(0, end) + "\n")) << end;
        EXPECT_FALSE(isTaken(line.substr(0, end) + " \n")) << end;
    }
    EXPECT_TRUE(isTaken(line + "\n"));
    EXPECT_EQ("00000000000003.000000:000", cpuTime());
}

TEST_F(StatFields, NeedNoLineEnd) {
    EXPECT_TRUE(isTaken("7 (prog) S 1 10 11 0 -1 41 12 13 14 15 250 50"));
    EXPECT_EQ("00000000000003.000000:000", cpuTime());
}

TEST_F(StatFields, NeedNoBlankAfterTheStateLetter) {
    EXPECT_TRUE(isTaken("7 (prog) S1 10 11 0 -1 41 12 13 14 15 250 50\n"));
    EXPECT_EQ("1", read("7", information).parentProcessID);
    EXPECT_EQ("00000000000003.000000:000", cpuTime());
}

TEST_F(StatFields, NeedNoBlankBeforeTheStateLetter) {
    EXPECT_TRUE(isTaken("7 (prog)S 1 10 11 0 -1 41 12 13 14 15 250 50\n"));
    EXPECT_EQ(2, read("7", information).executionState);
}

TEST_F(StatFields, MayBeSeparatedByAnyWhiteSpace) {
    EXPECT_TRUE(isTaken("  7\t( prog) \t S  1\v10\f11\r0 -1 41   12 13 14 15\t250  50 \n"));
    const Record record = read("7", information);
    EXPECT_EQ(" prog", record.name);
    EXPECT_EQ("1", record.parentProcessID);
    EXPECT_EQ("00000000000003.000000:000", cpuTime());
}

TEST_F(StatFields, BetweenParentAndTimesMayBeAnyWords) {
    EXPECT_TRUE(isTaken("7 (prog) S 1 a b c d e f g h ) 250 50\n"));
    EXPECT_EQ("00000000000003.000000:000", cpuTime());
}

TEST_F(StatFields, OfNumbersMustBeginWithANumber) {
    const std::string rest = " 10 11 0 -1 41 12 13 14 15 ";
    EXPECT_FALSE(isTaken("x (prog) S 1" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("(prog) S 1" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("- (prog) S 1" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("7x (prog) S 1" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("7 (prog) S x" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("7 (prog) S -" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("7 (prog) S +-1" + rest + "250 50\n"));
    EXPECT_FALSE(isTaken("7 (prog) S 1" + rest + "x 50\n"));
    EXPECT_FALSE(isTaken("7 (prog) S 1" + rest + "250 x\n"));
    EXPECT_TRUE(isTaken("7 (prog) S 1" + rest + "250 50x\n"));
    EXPECT_EQ("00000000000003.000000:000", cpuTime());
}

TEST_F(StatFields, OfTheParentMayBeNegativeOrTooLarge) {
    const std::string rest = " 10 11 0 -1 41 12 13 14 15 0 0\n";
    for (const auto& [text, expected] :
         {std::pair("0", "0"), std::pair("+1", "1"), std::pair("-1", "18446744073709551615"),
          std::pair("007", "7"), std::pair("18446744073709551615", "18446744073709551615"),
          std::pair("18446744073709551616", "18446744073709551615"),
          std::pair("99999999999999999999999", "18446744073709551615"),
          std::pair("184467440737095516160", "18446744073709551615"), std::pair("-18446744073709551615", "1"),
          std::pair("-18446744073709551616", "18446744073709551615")}) {
        EXPECT_TRUE(isTaken("7 (prog) S " + std::string(text) + rest));
        EXPECT_EQ(expected, read("7", information).parentProcessID) << text;
    }
}

TEST_F(StatFields, OfAnotherProcessAreAccepted) {
    EXPECT_TRUE(isTaken("8 (prog) S 1 10 11 0 -1 41 12 13 14 15 250 50\n"));
    EXPECT_EQ("7", read("7", information).handle);
    EXPECT_TRUE(isTaken("-99999999999999999999 (prog) S 1 10 11 0 -1 41 12 13 14 15 250 50\n"));
}

TEST_F(StatFields, CountWithinTheFirst511Bytes) {
    const std::string fields = ") S 1 10 11 0 -1 41 12 13 14 15 250 50";
    const std::string start = "7 (";
    const std::string name(511 - start.size() - fields.size(), 'x');
    EXPECT_TRUE(isTaken(start + name + fields + "1 2 3\n"));
    EXPECT_EQ("00000000000003.000000:000", cpuTime()) << "bytes after the 511th are ignored";
    EXPECT_TRUE(isTaken(start + name + "x" + fields + "\n"));
    EXPECT_EQ("00000000000002.550000:000", cpuTime());
    EXPECT_FALSE(isTaken(start + name + "xx" + fields + "\n"));
}

TEST_F(StatFields, AreOnTheFirstLine) {
    EXPECT_FALSE(isTaken("\n7 (prog) S 1 10 11 0 -1 41 12 13 14 15 250 50\n"));
    EXPECT_FALSE(isTaken("7 (prog) S 1 10 11 0 -1 41 12 13 14 15 250\n50\n"));
    EXPECT_FALSE(isTaken(""));
}

TEST_F(StatFields, EndAtAZeroByte) {
    using namespace std::string_literals;
    EXPECT_FALSE(isTaken("7 (prog) S 1 10 11 0 -1 41 12 13 14 15 250\0 50\n"s));
    EXPECT_FALSE(isTaken("7 (pr\0g) S 1 10 11 0 -1 41 12 13 14 15 250 50\n"s));
}

} // namespace
