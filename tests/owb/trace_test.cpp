// The trace looks at one file outside the current directory and at the clock. Both are replaced here by
// definitions of the program that stand in front of the C library's.
#include "owb.h"
#include "support/Descriptors.hpp"

#include "TraceLog.hpp"
#include "support/CommonSwitch.hpp"
#include "support/TempDir.hpp"

#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <sys/time.h>

namespace {

const timeval* fakedTime = nullptr; // null: the real clock

} // namespace

__attribute__((visibility("default"))) int gettimeofday(timeval* now, void* zone) noexcept {
    if (fakedTime) {
        *now = *fakedTime;
        return 0;
    }
    const auto real = reinterpret_cast<int (*)(timeval*, void*)>(dlsym(RTLD_NEXT, "gettimeofday"));
    return real(now, zone);
}

namespace {

using support::inChild;
using support::readFile;
using support::TempDir;

template <class... Values>
void debug(const char* format, Values... values) {
    OWB_Debug(const_cast<char*>("file.cpp"), const_cast<char*>("function"), 42UL, const_cast<char*>(format),
              values...);
}

class Trace : public testing::Test {
protected:
    Trace() { support::commonSwitch = m_folder.file("common/vdxDebug"); }

    // Without the time.
    std::string logged(const std::string& log) const {
        return std::regex_replace(readFile(m_folder.file(log)), std::regex("(^|\n)[0-9:]{12}: "), "$1");
    }
    bool exists(const std::string& name) const { return std::filesystem::exists(m_folder.file(name)); }
    void run(const std::function<void()>& body) const { EXPECT_EQ("", inChild(m_folder.path(), body)); }

    TempDir m_folder;
};

TEST_F(Trace, IsOffWithoutASwitchFileAndStaysOff) {
    run([this] {
        debug("dropped\n");
        m_folder.write("vdxDebug", m_folder.file("log"));
        debug("dropped too\n");
    });
    EXPECT_FALSE(exists("log"));
}

TEST_F(Trace, IsOnWithASwitchFileInTheCurrentDirectoryAndStaysOn) {
    m_folder.write("vdxDebug", m_folder.file("log") + "\n");
    run([this] {
        debug("one %d %s\n", 1, "x");
        std::filesystem::remove(m_folder.file("vdxDebug"));
        debug("two\n");
    });
    EXPECT_EQ("file.cpp:function:42: one 1 x\nfile.cpp:function:42: two\n", logged("log"));
}

TEST_F(Trace, LooksForACommonSwitchFileNext) {
    m_folder.write("common/vdxDebug", m_folder.file("log"));
    run([] { debug("x\n"); });
    EXPECT_EQ("file.cpp:function:42: x\n", logged("log"));
}

TEST_F(Trace, PrefersTheSwitchFileOfTheCurrentDirectory) {
    m_folder.write("vdxDebug", m_folder.file("own"));
    m_folder.write("common/vdxDebug", m_folder.file("common-log"));
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists("own"));
    EXPECT_FALSE(exists("common-log"));
}

TEST_F(Trace, TakesTheLogNameWithoutTheBlanksAroundIt) {
    m_folder.write("vdxDebug", " \t" + m_folder.file("log") + " \r\nsecond line\n");
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists("log"));
}

TEST_F(Trace, TakesAQuotedNameInSingleQuotes) {
    m_folder.write("vdxDebug", "\"log\"\n");
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists("'log'"));
    EXPECT_FALSE(exists("log"));
}

TEST_F(Trace, LosesEveryLineForAnEmptySwitchFileButStaysOn) {
    m_folder.write("vdxDebug", "");
    run([] {
        debug("x\n");
        debug("y\n");
    });
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(m_folder.path()), {}));
}

TEST_F(Trace, ReadsNoMoreThan255CharactersOfTheName) {
    const std::string name(254, 'n');
    m_folder.write("vdxDebug", name + "12345\n");
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists(name + "1"));
}

TEST_F(Trace, LosesALineWhoseLogCannotBeOpenedAndTriesAgain) {
    m_folder.write("vdxDebug", m_folder.file("missing/log"));
    run([this] {
        debug("lost\n");
        std::filesystem::create_directory(m_folder.file("missing"));
        debug("kept\n");
    });
    EXPECT_EQ("file.cpp:function:42: kept\n", logged("missing/log"));
}

TEST_F(Trace, MakesTheLogAgainAfterItWasMovedAway) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([this] {
        debug("one\n");
        std::filesystem::rename(m_folder.file("log"), m_folder.file("log.1"));
        debug("two\n");
    });
    EXPECT_EQ("file.cpp:function:42: one\n", logged("log.1"));
    EXPECT_EQ("file.cpp:function:42: two\n", logged("log"));
}

TEST_F(Trace, AppendsToALogThatIsThere) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    m_folder.write("log", "old\n");
    run([] { debug("new\n"); });
    EXPECT_EQ("old\nfile.cpp:function:42: new\n", logged("log"));
}

TEST_F(Trace, AddsNoLineEndOfItsOwn) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] {
        debug("no end ");
        debug("%s", "");
    });
    EXPECT_TRUE(std::regex_match(
        readFile(m_folder.file("log")),
        std::regex("[0-9:]{12}: file.cpp:function:42: no end [0-9:]{12}: file.cpp:function:42: ")));
}

TEST_F(Trace, BeginsALineWithTheLocalTimeInMilliseconds) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] {
        ::setenv("TZ", "XYZ-5:30", 1);                   // five and a half hours east of UTC
        static const timeval early = {1132918449, 8000}; // 2005-11-25 11:34:09 UTC
        static const timeval late = {1132918449, 999999};
        fakedTime = &early;
        debug("a\n");
        fakedTime = &late;
        debug("b\n");
        ::setenv("TZ", "UTC", 1);
        debug("c\n");
    });
    EXPECT_EQ("17:04:09:008: file.cpp:function:42: a\n17:04:09:999: file.cpp:function:42: b\n"
              "11:34:09:999: file.cpp:function:42: c\n",
              readFile(m_folder.file("log")));
}

TEST_F(Trace, CutsALongMessageAndKeepsItsLineEnd) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] { debug("%s\n", std::string(100000, 'x').c_str()); });
    const std::string line = logged("log");
    const std::string prefix = "file.cpp:function:42: ";
    EXPECT_EQ(prefix + std::string(1023 - 14 - prefix.size() - 1, 'x') + "\n", line);
}

TEST_F(Trace, KeepsTheLongestMessageThatFitsTheLineAndCutsTheNext) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    const std::size_t room = 1023 - 14 - std::strlen("file.cpp:function:42: ") - 1;
    run([room] {
        debug("%s\n", std::string(room, 'x').c_str());
        debug("%s\n", std::string(room + 1, 'y').c_str());
    });
    EXPECT_EQ("file.cpp:function:42: " + std::string(room, 'x') +
                  "\nfile.cpp:function:42: " + std::string(room, 'y') + "\n",
              logged("log"));
}

TEST_F(Trace, CutsALineWhosePrefixAloneIsTooLong) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] {
        std::string file(5000, 'f');
        OWB_Debug(file.data(), file.data(), 1, const_cast<char*>("x\n"));
    });
    EXPECT_EQ(std::string(1023 - 14 - 1, 'f') + "\n", logged("log"));
}

TEST_F(Trace, TakesEveryConversionThatTheCLibraryKnows) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] {
        int length = 0;
        debug("abc%n%d\n", &length, 4);
        EXPECT_EQ(3, length);
        debug("%2$s %1$s\n", "a", "b");
    });
    EXPECT_EQ("file.cpp:function:42: abc4\nfile.cpp:function:42: b a\n", logged("log"));
}

TEST_F(Trace, LeaksNoDescriptorOfTheLogOrTheSwitchFile) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] {
        const std::set<int> before = support::openDescriptors();
        debug("x\n");
        debug("x\n");
        EXPECT_EQ(before, support::openDescriptors());
    });
}

TEST_F(Trace, EndsALineWhoseMessageCannotBeFormatted) {
    m_folder.write("vdxDebug", m_folder.file("log"));
    run([] {
        debug("%ls\n", L"\x20ac"); // no such character in the C locale
        debug("next\n");
    });
    EXPECT_EQ("file.cpp:function:42: \nfile.cpp:function:42: next\n", logged("log"));
}

} // namespace
