// The parameters of a process, from its command line.
#include "inventory/Inventory.hpp"

using namespace std::string_literals;

namespace {

class Parameters : public Inventory {
protected:
    // The result of readRunParameters() for a file; the record had parameters before.
    Texts parametersOf(const std::string& cmdline) const {
        QAV_UnixProcessAPI::tUnixProcess record{};
        record.parameters.push_back("old");
        const std::string path = m_directory.write("cmdline", cmdline);
        EXPECT_EQ(1, QAV_UnixProcessAPI::readRunParameters(path.c_str(), record));
        Texts texts;
        for (const OpenWBEM::String& parameter : record.parameters)
            texts.emplace_back(parameter.c_str(), parameter.length());
        return texts;
    }
};

TEST_F(Parameters, AreTheTextsAfterTheProgramName) {
    EXPECT_EQ((Texts{"-a", "x"}), parametersOf("prog\0-a\0x\0"s));
    EXPECT_EQ((Texts{"-a"}), parametersOf("/usr/bin/prog\0-a\0"s));
    EXPECT_EQ((Texts{" ", "\t", "two words", "\xff"}), parametersOf("p\0 \0\t\0two words\0\xff\0"s));
}

TEST_F(Parameters, ComeWithTheProcess) {
    FakeProcess process;
    process.cmdline = "prog\0-a\0x\0"s;
    m_tree.add("7", process);
    EXPECT_EQ((Texts{"-a", "x"}), read("7", information).parameters);
    EXPECT_EQ(Texts{}, read("7", statistics).parameters);
}

TEST_F(Parameters, AreNoneWithoutACommandLine) {
    EXPECT_EQ(Texts{}, parametersOf(""));
    EXPECT_EQ(Texts{}, parametersOf("\n"));
}

TEST_F(Parameters, AreNoneAfterAProgramNameOnly) {
    EXPECT_EQ(Texts{}, parametersOf("prog\0"s));
    EXPECT_EQ(Texts{}, parametersOf("prog"));
    EXPECT_EQ(Texts{}, parametersOf("prog -a x"));
    EXPECT_EQ(Texts{}, parametersOf("p"));
}

TEST_F(Parameters, AreNoneAfterAnEmptyProgramName) {
    EXPECT_EQ(Texts{}, parametersOf("\0"s));
    EXPECT_EQ(Texts{}, parametersOf("\0-a\0x\0"s));
}

TEST_F(Parameters, EndWithTheFirstThatIsEmpty) {
    EXPECT_EQ(Texts{}, parametersOf("prog\0\0x\0"s));
    EXPECT_EQ(Texts{"-a"}, parametersOf("prog\0-a\0\0x\0"s));
    EXPECT_EQ((Texts{"-a", "x"}), parametersOf("prog\0-a\0x\0\0\0\0"s));
}

TEST_F(Parameters, EndWithTheFirstLine) {
    EXPECT_EQ((Texts{"a", "b\n"}), parametersOf("prog\0a\0b\nc\0d\0"s));
    EXPECT_EQ((Texts{"\n"}), parametersOf("prog\0\n\0d\0"s));
    EXPECT_EQ((Texts{"a\n"}), parametersOf("prog\0a\n"s));
    EXPECT_EQ(Texts{}, parametersOf("pr\nog\0a\0"s));
}

TEST_F(Parameters, NeedNoZeroByteAtTheEnd) {
    EXPECT_EQ((Texts{"-a", "x"}), parametersOf("prog\0-a\0x"s));
}

TEST_F(Parameters, EndWithThe511thByte) {
    const std::string start = "prog\0-a\0"s;
    for (const std::size_t size : {510U, 511U, 512U, 513U, 600U, 5000U, 100000U}) {
        const std::string text(size - start.size(), 'x');
        EXPECT_EQ((Texts{"-a", text.substr(0, 511 - start.size())}), parametersOf(start + text)) << size;
        EXPECT_EQ((Texts{"-a", text.substr(0, 511 - start.size())}), parametersOf(start + text + "\0y\0"s))
            << size;
    }
}

TEST_F(Parameters, TheLastTextIsReadUpToThe511thByte) {
    const std::string start = "prog\0"s + std::string(504, 'x');
    EXPECT_EQ((Texts{start.substr(5), "y"}), parametersOf(start + "\0yz\0"s));
    EXPECT_EQ((Texts{start.substr(5) + "x"}), parametersOf(start + "x\0yz\0"s))
        << "the zero byte is the last";
    EXPECT_EQ((Texts{start.substr(5) + "xx"}), parametersOf(start + "xx\0yz\0"s))
        << "the zero byte follows the last one";
}

TEST_F(Parameters, AreNoneAfterAProgramNameOf511Bytes) {
    for (const std::size_t size : {509U, 510U, 511U, 512U, 600U}) {
        const std::string name(size, 'p');
        EXPECT_EQ(Texts{}, parametersOf(name)) << size;
        EXPECT_EQ(size == 509 ? Texts{"a"} : Texts{}, parametersOf(name + "\0a\0"s)) << size;
    }
}

TEST_F(Parameters, OfOneByteFillTheFirst511Bytes) {
    std::string cmdline = "p\0"s;
    for (int i = 0; i < 300; ++i)
        cmdline += "a\0"s;
    EXPECT_EQ(Texts(255, "a"), parametersOf(cmdline));
}

TEST_F(Parameters, OfAFileThatCannotBeOpenedAreUnchanged) {
    QAV_UnixProcessAPI::tUnixProcess record{};
    record.parameters.push_back("old");
    EXPECT_EQ(0, QAV_UnixProcessAPI::readRunParameters(m_directory.file("none").c_str(), record));
    ASSERT_EQ(1U, record.parameters.size());
    EXPECT_EQ("old", record.parameters[0]);
}

TEST_F(Parameters, OfAnUnreadableFileAreNone) {
    QAV_UnixProcessAPI::tUnixProcess record{};
    record.parameters.push_back("old");
    EXPECT_EQ(1, QAV_UnixProcessAPI::readRunParameters(m_directory.path().c_str(), record));
    EXPECT_EQ(0U, record.parameters.size());
}

} // namespace
