// The fields of the status file of a process.
#include "inventory/Inventory.hpp"

namespace {

class Status : public Inventory {
protected:
    Status() { m_tree.add("7"); }

    Record readStatus(const std::string& status, QAV_UnixProcessAPI::tProcessInfoType type) const {
        m_tree.write("7", "status", status);
        return read("7", type);
    }
    // "user group"
    std::string identity(const std::string& status) const {
        const Record record = readStatus(status, information);
        EXPECT_EQ("0 0 0", sizesOf(record)) << "only in the other mode";
        return std::to_string(record.realUserID) + " " + std::to_string(record.processGroupID);
    }
    // "text data stack"
    std::string sizes(const std::string& status) const {
        const Record record = readStatus(status, statistics);
        EXPECT_EQ(0U, record.realUserID + record.processGroupID) << "only in the other mode";
        return sizesOf(record);
    }

private:
    static std::string sizesOf(const Record& record) {
        return std::to_string(record.realText) + " " + std::to_string(record.realData) + " " +
               std::to_string(record.realStack);
    }
};

TEST_F(Status, GivesTheEffectiveUserAndGroup) {
    EXPECT_EQ("1000 100", identity("Uid:\t0\t1000\t1002\t1003\nGid:\t5\t100\t102\t103\n"));
    EXPECT_EQ("4294967295 4294967294", identity("Uid:\t1 4294967295 1 1\nGid:\t1 4294967294 1 1\n"));
}

TEST_F(Status, GivesTheSizes) {
    EXPECT_EQ("1600 300 132",
              sizes("VmData:\t 300 kB\nVmStk:\t 132 kB\nVmExe:\t 100 kB\nVmLib:\t 1500 kB\n"));
    EXPECT_EQ("1600 300 132", sizes("VmLib: 1500 kB\nVmExe: 100 kB\nVmStk: 132 kB\nVmData: 300 kB\n"));
}

TEST_F(Status, AddsTheSizesOfTheText) {
    EXPECT_EQ("100 0 0", sizes("VmExe:\t 100 kB\n"));
    EXPECT_EQ("1500 0 0", sizes("VmLib:\t 1500 kB\n"));
    EXPECT_EQ("1 0 0", sizes("VmExe:\t 18446744073709551615 kB\nVmLib:\t 2 kB\n"));
}

TEST_F(Status, MayLackAllKeys) {
    for (const char* const status :
         {"", "\n", "Name:\tprog\nThreads:\t1\n", "Uid", "Uid:", "VmExe:\nVmData:\n"}) {
        EXPECT_EQ("0 0", identity(status));
        EXPECT_EQ("0 0 0", sizes(status));
    }
}

TEST_F(Status, MayLackSomeKeys) {
    EXPECT_EQ("5 0", identity("Uid:\t4\t5\t6\t7\n"));
    EXPECT_EQ("0 5", identity("Gid:\t4\t5\t6\t7\n"));
    EXPECT_EQ("0 5 0", sizes("VmData:\t5 kB\n"));
    EXPECT_EQ("0 0 5", sizes("VmStk:\t5 kB\n"));
}

TEST_F(Status, KeysBeginTheirLine) {
    EXPECT_EQ("0 0", identity(" Uid:\t1\t2\nxGid:\t1\t2\nName: Uid:\t1\t2\n"));
    EXPECT_EQ("0 0 0", sizes(" VmExe: 1 kB\nxVmData: 1 kB\n VmStk: 1 kB\nName: VmLib: 1 kB\n"));
}

TEST_F(Status, KeysMatchCompletely) {
    EXPECT_EQ("0 0", identity("uid:\t1\t2\nUid\t1\t2\nGID:\t1\t2\nGid \t1\t2\nUi\nGi\n"));
    EXPECT_EQ("0 0 0", sizes("VmExe 1 2\nVmExec: 1 kB\nvmLib: 1 kB\nVmDat: 1 kB\nVmStack: 1 kB\nVm\n"));
}

TEST_F(Status, UsesTwoLinesForUserAndGroup) {
    EXPECT_EQ("4 0", identity("Uid:\t1\t2\nUid:\t3\t4\nGid:\t5\t6\n"));
    EXPECT_EQ("0 4", identity("Gid:\t1\t2\nGid:\t3\t4\nUid:\t5\t6\n"));
    EXPECT_EQ("2 4", identity("Uid:\t1\t2\nGid:\t3\t4\nUid:\t5\t6\nGid:\t7\t8\n"));
}

TEST_F(Status, UsesFourLinesForTheSizes) {
    EXPECT_EQ("10 0 0",
              sizes("VmExe: 1 kB\nVmExe: 2 kB\nVmLib: 3 kB\nVmLib: 4 kB\nVmData: 5 kB\nVmStk: 6 kB\n"));
    EXPECT_EQ("0 2 0", sizes("VmData: 5 kB\nVmData: 6 kB\nVmData: 7 kB\nVmData: 2 kB\nVmStk: 6 kB\n"));
    EXPECT_EQ("0 0 4", sizes("VmStk: 1 kB\nVmStk: 2 kB\nVmStk: 3 kB\nVmStk: 4 kB\nVmExe: 6 kB\n"));
    EXPECT_EQ("3 4 5", sizes("VmLib: 1 kB\nVmExe: 2 kB\nVmData: 4 kB\nVmStk: 5 kB\nVmLib: 6 kB\n"));
}

TEST_F(Status, CountsALineWithoutItsNumberToo) {
    EXPECT_EQ("0 0", identity("Uid:\nGid:\t1\nUid:\t5\t6\nGid:\t7\t8\n"));
    EXPECT_EQ("0 0 5", sizes("VmExe:\nVmLib: kB\nVmData:\nVmStk: 5 kB\nVmExe: 3 kB\n"));
    EXPECT_EQ("0 0 0", sizes("VmExe:\nVmLib: x\nVmData: x\nVmStk:\nVmData: 3 kB\n"));
}

TEST_F(Status, AMissingNumberKeepsThePreviousOne) {
    EXPECT_EQ("2 0", identity("Uid:\t1\t2\nUid:\t1\nGid:\t5\t6\n"));
    EXPECT_EQ("1 2 3", sizes("VmExe: 1 kB\nVmData: 2 kB\nVmStk: 3 kB\nVmLib:\n"));
    EXPECT_EQ("0 2 3", sizes("VmData: 2 kB\nVmData: x\nVmStk: 3 kB\nVmStk:\nVmExe: 1 kB\n"));
}

TEST_F(Status, AnyFirstWordAfterTheKeyOfAnIdentityIsSkipped) {
    EXPECT_EQ("2 4", identity("Uid: x 2\nGid:3 4\n"));
    EXPECT_EQ("1 4", identity("Uid:0x 1\nGid:- +4\n"));
}

TEST_F(Status, ASizeIsTheSecondWord) {
    EXPECT_EQ("7 8 9", sizes("VmExe:1 7\nVmData:x 8\nVmStk:  9kB\n")) << "the key is in the first word";
    EXPECT_EQ("0 0 0", sizes("VmExe:7\nVmData:8\nVmStk:9\n"));
}

TEST_F(Status, NumbersMayBeNegativeOrTooLarge) {
    EXPECT_EQ("18446744073709551615 18446744073709551615",
              identity("Uid:\t0\t-1\nGid:\t0\t99999999999999999999\n"));
    EXPECT_EQ("18446744073709551614 1 18446744073709551615",
              sizes("VmExe: -2 kB\nVmData: +1 kB\nVmStk: 18446744073709551616 kB\n"));
}

TEST_F(Status, NeedsNoLineEndAfterItsLastLine) {
    EXPECT_EQ("2 4", identity("Uid:\t1\t2\nGid:\t3\t4"));
    EXPECT_EQ("1 2 3", sizes("VmExe: 1 kB\nVmData: 2 kB\nVmStk: 3"));
}

} // namespace
