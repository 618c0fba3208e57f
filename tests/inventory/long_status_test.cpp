// Status files with too long and with very many lines.
#include "inventory/Inventory.hpp"

namespace {

const std::string identities = "Uid:\t1\t2\nGid:\t3\t4\n";
const std::string sizeLines = "VmExe: 1 kB\nVmData: 2 kB\nVmStk: 3 kB\nVmLib: 4 kB\n";

class LongStatus : public Inventory {
protected:
    LongStatus() { m_tree.add("7"); }

    Record readStatus(const std::string& status, QAV_UnixProcessAPI::tProcessInfoType type) const {
        m_tree.write("7", "status", status);
        return read("7", type);
    }
    std::string identity(const std::string& status) const {
        const Record record = readStatus(status, information);
        return std::to_string(record.realUserID) + " " + std::to_string(record.processGroupID);
    }
    std::string sizes(const std::string& status) const {
        const Record record = readStatus(status, statistics);
        return std::to_string(record.realText) + " " + std::to_string(record.realData) + " " +
               std::to_string(record.realStack);
    }
};

// A line "Groups:" of a size, including its end.
std::string groups(std::size_t size) {
    std::string line = "Groups:\t";
    while (line.size() < size - 1)
        line += "1000 ";
    line.resize(size - 1);
    return line + "\n";
}

TEST_F(LongStatus, ALineOfMoreThan511BytesCountsAsSeveral) {
    const std::string start(511, 'x');
    EXPECT_EQ("2 4", identity(start + identities));
    EXPECT_EQ("5 2 3", sizes(start + sizeLines));
    EXPECT_EQ("2 4", identity(start + start + identities)) << "the third piece begins there";
    EXPECT_EQ("6 8", identity(start + "Uid:\t5\t6\n" + start + "Gid:\t7\t8\n" + identities));
}

TEST_F(LongStatus, AKeyInsideALongLineIsIgnored) {
    for (const std::size_t size : {1U, 255U, 509U, 510U, 512U, 513U, 1021U, 1023U}) {
        const std::string start(size, 'x');
        EXPECT_EQ("0 4", identity(start + identities)) << size;
        EXPECT_EQ("4 2 3", sizes(start + sizeLines)) << size;
    }
}

TEST_F(LongStatus, ALineOf510BytesAndItsEndIsOneLine) {
    EXPECT_EQ("2 4", identity(std::string(510, 'x') + "\n" + identities));
    EXPECT_EQ("2 4", identity(std::string(511, 'x') + "\n" + identities));
    EXPECT_EQ("2 4", identity(std::string(512, 'x') + "\n" + identities));
}

TEST_F(LongStatus, ANumberAtTheLimitIsTruncated) {
    const std::string line = "Uid:" + std::string(505, 'x') + " 23 \n"; // the 511th byte is the 2
    EXPECT_EQ("2 4", identity(line + "Gid:\t3\t4\n"));
}

TEST_F(LongStatus, LongLinesMayPrecedeAndFollowTheKeys) {
    const std::string lines = groups(5000);
    EXPECT_EQ("2 4", identity(lines + identities + lines));
    EXPECT_EQ("5 2 3", sizes(lines + sizeLines + lines));
    EXPECT_EQ("2 4", identity("Uid:\t1\t2\n" + lines + "Gid:\t3\t4\n"));
    EXPECT_EQ("5 2 3",
              sizes("VmExe: 1 kB\n" + lines + "VmData: 2 kB\n" + lines + "VmStk: 3 kB\nVmLib: 4 kB\n"));
}

// Independent of the boundaries of the reads.
TEST_F(LongStatus, KeysMayBeAnywhereInAFileOfSeveralThousandBytes) {
    for (std::size_t size = 3500; size<4700; size += size> 4000 && size < 4110 ? 1 : 50) {
        std::string lines;
        while (lines.size() + 100 < size)
            lines += groups(100);
        lines += groups(size - lines.size() + 10);
        EXPECT_EQ("2 4", identity(lines + identities)) << size;
        EXPECT_EQ("5 2 3", sizes(lines + sizeLines)) << size;
    }
}

TEST_F(LongStatus, AFileOf100000BytesIsReadToItsEnd) {
    std::string lines;
    for (int i = 0; i < 1000; ++i)
        lines += groups(100);
    EXPECT_EQ("2 4", identity(lines + identities));
    EXPECT_EQ("5 2 3", sizes(lines + groups(100000) + sizeLines));
}

TEST_F(LongStatus, AZeroByteEndsItsLine) {
    using namespace std::string_literals;
    EXPECT_EQ("0 4", identity("Uid:\t1\0\t2\nGid:\t3\t4\n"s));
    EXPECT_EQ("2 4", identity("Uid:\t1\t2\0\nGid:\t3\t4\n"s));
}

} // namespace
