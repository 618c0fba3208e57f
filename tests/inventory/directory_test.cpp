// The directory of the processes: which of its entries are processes.
#include "inventory/Inventory.hpp"
#include "support/Descriptors.hpp"

#include <dirent.h>
#include <filesystem>
#include <fstream>
#include <set>
#include <unistd.h>

namespace {

class ProcDirectory : public Inventory {};

TEST_F(ProcDirectory, ANameThatBeginsWithANumberOtherThan0IsAProcess) {
    for (const char* const name : {"1", "123", "4194304"})
        m_tree.add(name);
    for (const char* const name :
         {"self", "thread-self", "0", "00", "0x12", "0 12", "sys", "net", "x1", "-", "+", "- 5", ".5", "_1"})
        m_tree.add(name);
    for (const auto type : {information, statistics})
        EXPECT_EQ((Texts{"1", "123", "4194304"}), found(type));
}

TEST_F(ProcDirectory, TheHandleIsTheNameAndTheProcessIsItsNumber) {
    FakeProcess process;
    process.name = "hundred";
    m_tree.add("123", process);
    const Texts names = {"+123", "0123", "123", "123abc", "123.5", " 123", "\t123"};
    for (const std::string& name : names)
        std::filesystem::create_directories(m_tree.path() + "/" + name);
    EXPECT_EQ((Texts{"\t123", " 123", "+123", "0123", "123", "123.5", "123abc"}), found(information));
    for (const std::string& name : names) {
        EXPECT_EQ("hundred", read(name, information).name);
        EXPECT_EQ(name, read(name, information).handle);
        EXPECT_EQ("hundred", read(name, statistics).name);
    }
}

TEST_F(ProcDirectory, ANegativeNumberIsNotAProcess) {
    for (const char* const name : {"-5", "5", "4294967291"})
        m_tree.add(name);
    EXPECT_FALSE(isFound("-5", information));
    EXPECT_FALSE(isFound("-5", statistics));
    m_tree.remove("4294967291");
    EXPECT_EQ(Texts{"5"}, found());
}

TEST_F(ProcDirectory, ANegativeNumberWrapsAt64Bits) {
    m_tree.add("18446744073709551611");
    EXPECT_EQ("-5", read("-5", information).handle);
    std::filesystem::create_directory(m_tree.path() + "/-5");
    EXPECT_EQ(Texts{"-5"}, found());
}

TEST_F(ProcDirectory, ANumberThatIsTooLargeIsTheLargestOfALong) {
    m_tree.add("99999999999");
    EXPECT_FALSE(isFound("99999999999", statistics));
    m_tree.add("2147483647");
    EXPECT_EQ("99999999999", read("99999999999", statistics).handle);
    EXPECT_EQ((Texts{"2147483647", "99999999999"}), found());
}

TEST_F(ProcDirectory, AnEntryWithoutFilesIsNotAProcess) {
    m_tree.add("7");
    std::filesystem::create_directory(m_tree.path() + "/8");
    std::ofstream(m_tree.path() + "/9") << "not a directory";
    std::filesystem::create_symlink("nowhere", m_tree.path() + "/10");
    EXPECT_EQ(Texts{"7"}, found(information));
    EXPECT_EQ(Texts{"7"}, found(statistics));
}

TEST_F(ProcDirectory, ProcessesAreInItsOrder) {
    for (int id = 1; id <= 200; ++id)
        m_tree.add(std::to_string(id * 7919 % 4001 + 1));
    Texts names;
    DIR* const directory = ::opendir(m_tree.path().c_str());
    while (const dirent* const entry = ::readdir(directory))
        if (entry->d_name[0] != '.')
            names.push_back(entry->d_name);
    ::closedir(directory);
    for (const auto type : {information, statistics}) {
        Texts handles;
        for (const Record& record : readAll(type))
            handles.push_back(record.handle);
        EXPECT_EQ(names, handles);
    }
}

TEST_F(ProcDirectory, ThatIsEmptyOrMissingGivesAnEmptyTable) {
    EXPECT_EQ(Texts{}, found(information));
    EXPECT_EQ(Texts{}, found(statistics));
    std::filesystem::create_directory(m_tree.path());
    EXPECT_EQ(Texts{}, found(information));
    EXPECT_EQ(Texts{}, found(statistics));
}

TEST_F(ProcDirectory, IsClosedAfterTheRead) {
    m_tree.add("7");
    const std::set<int> before = support::openDescriptors();
    EXPECT_EQ(Texts{"7"}, found());
    EXPECT_EQ(before, support::openDescriptors());
}

} // namespace
