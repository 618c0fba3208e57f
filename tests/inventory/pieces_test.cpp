// Files that arrive in pieces, and files without an end.
#include "inventory/Inventory.hpp"
#include "inventory/Pipe.hpp"

#include <fcntl.h>
#include <functional>
#include <future>
#include <unistd.h>

using namespace std::string_literals;

namespace {

using Pieces = std::vector<std::string>;

/** A text in pieces of a size. */
Pieces piecesOf(const std::string& text, std::size_t size) {
    Pieces pieces;
    for (std::size_t begin = 0; begin < text.size(); begin += size)
        pieces.push_back(text.substr(begin, size));
    return pieces;
}

class InPieces : public Inventory {
protected:
    InPieces() {
        m_process.userTime = "250";
        m_process.systemTime = "50";
        m_process.cmdline = "prog\0-a\0x\0"s;
        m_tree.add("7", m_process);
    }

    Record read(const std::string& name, const Pieces& pieces,
                QAV_UnixProcessAPI::tProcessInfoType type) const {
        m_tree.remove("7", name);
        const Pipe file(m_tree.file("7", name), pieces);
        return Inventory::read("7", type);
    }
    // The pipe ends only after the process has been read.
    Record readWithoutEnd(const std::string& name, const std::string& content,
                          QAV_UnixProcessAPI::tProcessInfoType type) const {
        m_tree.remove("7", name);
        const std::string path = m_tree.file("7", name);
        std::promise<int> opened;
        const Pipe file(path, {content},
                        [&] { opened.set_value(::open(path.c_str(), O_WRONLY | O_CLOEXEC)); });
        const Record record = Inventory::read("7", type);
        ::close(opened.get_future().get());
        return record;
    }

    FakeProcess m_process;
};

TEST_F(InPieces, AStatFileIsReadToTheEndOfItsLine) {
    for (const std::size_t size : {1U, 4U, 5U, 40U, 60U}) {
        EXPECT_EQ("prog", read("stat", piecesOf(m_process.stat("7"), size), information).name) << size;
        EXPECT_EQ("00000000000003.000000:000",
                  read("stat", piecesOf(m_process.stat("7"), size), statistics).totalCpuTime)
            << size;
    }
}

TEST_F(InPieces, ACommandLineIsReadToItsEnd) {
    for (const std::size_t size : {1U, 4U, 5U, 9U})
        EXPECT_EQ((Texts{"-a", "x"}),
                  read("cmdline", piecesOf(m_process.cmdline, size), information).parameters)
            << size;
}

TEST_F(InPieces, ACommandLineIsReadUpToItsFirst511Bytes) {
    const std::string cmdline = "prog\0"s + std::string(1000, 'x');
    for (const std::size_t size : {100U, 500U, 511U, 512U})
        EXPECT_EQ(Texts{std::string(506, 'x')},
                  read("cmdline", piecesOf(cmdline, size), information).parameters)
            << size;
}

TEST_F(InPieces, AStatusFileIsReadUpToTheLastUsedLine) {
    for (const std::size_t size : {1U, 3U, 10U, 20U, 100U}) {
        EXPECT_EQ(100U, read("status", piecesOf(m_process.status, size), information).processGroupID) << size;
        const Record record = read("status", piecesOf(m_process.status, size), statistics);
        EXPECT_EQ(1600U, record.realText) << size;
        EXPECT_EQ(132U, record.realStack) << size;
    }
}

TEST_F(InPieces, AStatFileIsReadOnlyToTheEndOfItsLine) {
    EXPECT_EQ("prog", readWithoutEnd("stat", m_process.stat("7"), information).name);
}

TEST_F(InPieces, ACommandLineIsReadOnlyToTheEndOfItsFirstLine) {
    EXPECT_EQ(Texts{"a\n"}, readWithoutEnd("cmdline", "prog\0a\n"s, information).parameters);
}

TEST_F(InPieces, AStatusFileIsReadOnlyToTheLastUsedLine) {
    EXPECT_EQ(2U, readWithoutEnd("status", "Uid:\t1\t2\nGid:\t3\t4\n", information).realUserID);
    EXPECT_EQ(4U,
              readWithoutEnd("status", "VmExe: 1 kB\nVmLib: 3 kB\nVmData: 2 kB\nVmStk: 3 kB\n", statistics)
                  .realText);
}

} // namespace
