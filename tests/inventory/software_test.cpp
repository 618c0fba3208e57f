// The run type of a program, from the output of the software inventory.
#include "SoftwareType.hpp"
#include "inventory/Inventory.hpp"

#include <sstream>

namespace {

enum RunType : unsigned short { operatingSystem = 2, deviceDriver = 3, application = 4 };

/** The run type of a program in an inventory that prints a text. */
unsigned short typeIn(const std::string& text, const std::string& name) {
    Texts lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    std::vector<const char*> pointers;
    for (const std::string& line : lines)
        pointers.push_back(line.c_str());
    pointers.push_back(nullptr);
    return inventory::softwareType(pointers.data(), OpenWBEM::String(name.c_str(), name.size()));
}

/** The run type that the fourth word of a line denotes. */
unsigned short typeOf(const std::string& word) {
    return typeIn("prog a b " + word + "\n", "prog");
}

class SoftwareOfAProcess : public Inventory {};

TEST(Software, IsTheFourthWord) {
    const std::string text = "sshd a b Application\nsyslogd x y Driver\nkernel p q Operating System\n";
    EXPECT_EQ(application, typeIn(text, "sshd"));
    EXPECT_EQ(deviceDriver, typeIn(text, "syslogd"));
    EXPECT_EQ(operatingSystem, typeIn(text, "kernel"));
    EXPECT_EQ(application, typeIn(text, "other"));
}

TEST_F(SoftwareOfAProcess, IsLookedUpByItsName) {
    Texts names;
    m_sources.runType = [&names](const OpenWBEM::String& name) {
        names.push_back(name.c_str());
        return deviceDriver;
    };
    FakeProcess process;
    process.name = "other"; // its path says prog
    m_tree.add("7", process);
    EXPECT_EQ(deviceDriver, read("7", information).runType);
    EXPECT_EQ(Texts{"other"}, names);
}

TEST_F(SoftwareOfAProcess, IsNotLookedUpForStatistics) {
    m_sources.runType = nullptr;
    m_tree.add("7");
    EXPECT_EQ(0, read("7", statistics).runType);
}

TEST_F(SoftwareOfAProcess, IsLookedUpBetweenCommandLineAndStatus) {
    int count = 0;
    m_sources.runType = [&count](const OpenWBEM::String&) {
        ++count;
        return deviceDriver;
    };
    m_tree.add("7");
    m_tree.remove("7", "status");
    EXPECT_FALSE(isFound("7", information));
    EXPECT_EQ(1, count);
    m_tree.remove("7", "cmdline");
    EXPECT_FALSE(isFound("7", information));
    EXPECT_EQ(1, count);
}

TEST(Software, OfAnInventoryThatPrintsNothingIsAnApplication) {
    EXPECT_EQ(application, inventory::softwareType(nullptr, "prog"));
    EXPECT_EQ(application, typeIn("", "prog"));
    EXPECT_EQ(application, typeIn("", ""));
}

TEST(Software, AnyPrefixOfDriverIsADriver) {
    for (const char* const word : {"D", "Dr", "Dri", "Driv", "Drive", "Driver"})
        EXPECT_EQ(deviceDriver, typeOf(word)) << word;
    for (const char* const word : {"Drivers", "Driver,", "DriverOperating", "d", "driver", "Dx", "river"})
        EXPECT_EQ(application, typeOf(word)) << word;
}

TEST(Software, AnyPrefixOfOperatingIsTheOperatingSystem) {
    for (const char* const word :
         {"O", "Op", "Ope", "Oper", "Opera", "Operat", "Operati", "Operatin", "Operating"})
        EXPECT_EQ(operatingSystem, typeOf(word)) << word;
    for (const char* const word : {"OperatingX", "OperatingSystem", "o", "operating", "OD", "OperatinX"})
        EXPECT_EQ(application, typeOf(word)) << word;
}

TEST(Software, TheLengthOfTheWordCountsIn16Bits) {
    EXPECT_EQ(deviceDriver, typeOf(std::string(65536, 'x')));
    EXPECT_EQ(deviceDriver, typeOf("D" + std::string(65536, 'x')));
    EXPECT_EQ(operatingSystem, typeOf("Oper" + std::string(65536, 'x')));
    EXPECT_EQ(application, typeOf("O" + std::string(65537, 'x')));
    EXPECT_EQ(application, typeOf("D" + std::string(65534, 'x')));
}

TEST(Software, TheLengthOfTheNameCountsIn16Bits) {
    EXPECT_EQ(deviceDriver, typeIn("any a b Driver\n", std::string(65536, 'x')));
    EXPECT_EQ(deviceDriver, typeIn("any a b Driver\n", "a" + std::string(65536, 'x')));
    EXPECT_EQ(application, typeIn("any a b Driver\n", "a" + std::string(65537, 'x')));
}

TEST(Software, TheLastMatchingLineDecides) {
    EXPECT_EQ(operatingSystem, typeIn("prog a b Driver\nother a b Driver\nprog a b Oper\n", "prog"));
    EXPECT_EQ(application, typeIn("prog a b Driver\nprog a b None\nother a b Driver\n", "prog"));
    EXPECT_EQ(deviceDriver, typeIn("prog a b Oper\nprog a b None\nprog a b Driver\n", "prog"));
}

TEST(Software, ALineThatBeginsWithTheNameMatches) {
    EXPECT_EQ(deviceDriver, typeIn("bashful a b Driver\n", "bash"));
    EXPECT_EQ(deviceDriver, typeIn("bash a b Oper\nbashful a b Driver\n", "bash"));
    EXPECT_EQ(deviceDriver, typeIn("bash a b Oper\nbashful a b Driver\nbas a b Oper\n", "bash"));
    EXPECT_EQ(application, typeIn("Bash a b Driver\n bash a b Driver\nbas a b Driver\nbas\n", "bash"));
    EXPECT_EQ(deviceDriver, typeIn("two words b Driver\n", "two words"));
    EXPECT_EQ(deviceDriver, typeIn("a b c Driver\n", "a b c Dri"));
}

TEST(Software, AnEmptyNameMatchesEveryLine) {
    EXPECT_EQ(deviceDriver, typeIn("x a b Oper\ny a b Driver\n", ""));
    EXPECT_EQ(application, typeIn("x a b Oper\n\ny a b Driver\n", ""));
}

TEST(Software, AMatchingLineOfFewerWordsEndsTheSearch) {
    for (const char* const line : {"prog", "prog a", "prog a b", "prog a b ", "prog  a\t b \t ", "program"}) {
        const std::string between = std::string(line) + "\n";
        EXPECT_EQ(application, typeIn(between, "prog")) << line;
        EXPECT_EQ(application, typeIn("prog a b Driver\n" + between, "prog")) << line;
        EXPECT_EQ(application, typeIn("prog a b Driver\n" + between + "prog a b Oper\n", "prog")) << line;
    }
}

TEST(Software, AnyWhiteSpaceSeparatesTheWords) {
    EXPECT_EQ(deviceDriver, typeIn("prog \t a\v\f b \r Driver more\n", "prog"));
    EXPECT_EQ(deviceDriver, typeIn("prog a b Driver\r\n", "prog"));
    EXPECT_EQ(operatingSystem, typeIn("  prog a b Oper\n", "  prog"));
}

TEST(Software, IsFoundIn70000Lines) {
    std::string text = "prog a b Operating\n";
    for (int i = 0; i < 70000; ++i)
        text += "other" + std::to_string(i) + " a b Driver\n";
    EXPECT_EQ(operatingSystem, typeIn(text, "prog"));
    EXPECT_EQ(deviceDriver, typeIn(text + "prog a b Driver\n", "prog")) << "also in the last line";
}

} // namespace
