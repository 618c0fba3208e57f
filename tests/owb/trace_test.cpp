// The trace. The test interposes what it uses outside the current directory: the common switch file and the
// clock.
#include "owb.h"
#include "support/Descriptors.hpp"

#include "TraceLog.hpp"
#include "support/CommonSwitch.hpp"
#include "support/Pattern.hpp"
#include "support/TempDir.hpp"

#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/time.h>

namespace {

const timeval* fakedTime = nullptr; // null: the real clock
/** The header gives the function this name if time_t is wider than the platform's numbers. */
const char* const clockName = sizeof(time_t) > sizeof(long) ? "__gettimeofday64" : "gettimeofday";

} // namespace

__attribute__((visibility("default"))) int gettimeofday(timeval* now, void* zone) noexcept {
    if (fakedTime) {
        *now = *fakedTime;
        return 0;
    }
    const auto real = reinterpret_cast<int (*)(timeval*, void*)>(dlsym(RTLD_NEXT, clockName));
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
    Trace() { support::commonSwitch = m_directory.file("common/vdxDebug"); }

    // The log without the times.
    std::string logged(const std::string& log) const {
        return support::replacedAll(readFile(m_directory.file(log)), "(^|\n)[0-9:]{12}: ", "$1");
    }
    bool exists(const std::string& name) const { return std::filesystem::exists(m_directory.file(name)); }
    void run(const std::function<void()>& body) const { EXPECT_EQ("", inChild(m_directory.path(), body)); }

    TempDir m_directory;
};

TEST_F(Trace, IsOffWithoutASwitchFileAndStaysOff) {
    run([this] {
        debug("dropped\n");
        m_directory.write("vdxDebug", m_directory.file("log"));
        debug("dropped too\n");
    });
    EXPECT_FALSE(exists("log"));
}

TEST_F(Trace, IsOnWithASwitchFileInTheCurrentDirectoryAndStaysOn) {
    m_directory.write("vdxDebug", m_directory.file("log") + "\n");
    run([this] {
        debug("one %d %s\n", 1, "x");
        std::filesystem::remove(m_directory.file("vdxDebug"));
        debug("two\n");
    });
    EXPECT_EQ("file.cpp:function:42: one 1 x\nfile.cpp:function:42: two\n", logged("log"));
}

TEST_F(Trace, LooksForACommonSwitchFileNext) {
    m_directory.write("common/vdxDebug", m_directory.file("log"));
    run([] { debug("x\n"); });
    EXPECT_EQ("file.cpp:function:42: x\n", logged("log"));
}

TEST_F(Trace, PrefersTheSwitchFileOfTheCurrentDirectory) {
    m_directory.write("vdxDebug", m_directory.file("own"));
    m_directory.write("common/vdxDebug", m_directory.file("common-log"));
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists("own"));
    EXPECT_FALSE(exists("common-log"));
}

TEST_F(Trace, StripsTheLogName) {
    m_directory.write("vdxDebug", " \t" + m_directory.file("log") + " \r\nsecond line\n");
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists("log"));
}

TEST_F(Trace, ReplacesDoubleQuotesInTheLogName) {
    m_directory.write("vdxDebug", "\"log\"\n");
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists("'log'"));
    EXPECT_FALSE(exists("log"));
}

TEST_F(Trace, LosesEveryLineForAnEmptySwitchFileButStaysOn) {
    m_directory.write("vdxDebug", "");
    run([] {
        debug("x\n");
        debug("y\n");
    });
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(m_directory.path()), {}));
}

TEST_F(Trace, ReadsNoMoreThan255CharactersOfTheName) {
    const std::string name(254, 'n');
    m_directory.write("vdxDebug", name + "12345\n");
    run([] { debug("x\n"); });
    EXPECT_TRUE(exists(name + "1"));
}

TEST_F(Trace, LosesALineWhoseLogCannotBeOpenedAndTriesAgain) {
    m_directory.write("vdxDebug", m_directory.file("missing/log"));
    run([this] {
        debug("lost\n");
        std::filesystem::create_directory(m_directory.file("missing"));
        debug("kept\n");
    });
    EXPECT_EQ("file.cpp:function:42: kept\n", logged("missing/log"));
}

TEST_F(Trace, CreatesTheLogAgainAfterItWasRenamed) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([this] {
        debug("one\n");
        std::filesystem::rename(m_directory.file("log"), m_directory.file("log.1"));
        debug("two\n");
    });
    EXPECT_EQ("file.cpp:function:42: one\n", logged("log.1"));
    EXPECT_EQ("file.cpp:function:42: two\n", logged("log"));
}

TEST_F(Trace, AppendsToAnExistingLog) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    m_directory.write("log", "old\n");
    run([] { debug("new\n"); });
    EXPECT_EQ("old\nfile.cpp:function:42: new\n", logged("log"));
}

TEST_F(Trace, AddsNoLineEnd) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([] {
        debug("no end ");
        debug("%s", "");
    });
    EXPECT_TRUE(
        support::matches(readFile(m_directory.file("log")),
                         "[0-9:]{12}: file.cpp:function:42: no end [0-9:]{12}: file.cpp:function:42: "));
}

TEST_F(Trace, BeginsALineWithTheLocalTimeInMilliseconds) {
    m_directory.write("vdxDebug", m_directory.file("log"));
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
              readFile(m_directory.file("log")));
}

TEST_F(Trace, TruncatesALongMessageAndKeepsItsLineEnd) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([] { debug("%s\n", std::string(100000, 'x').c_str()); });
    const std::string line = logged("log");
    const std::string prefix = "file.cpp:function:42: ";
    EXPECT_EQ(prefix + std::string(1023 - 14 - prefix.size() - 1, 'x') + "\n", line);
}

TEST_F(Trace, KeepsAMessageOfTheMaximumLengthAndTruncatesALongerOne) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    const std::size_t room = 1023 - 14 - std::strlen("file.cpp:function:42: ") - 1;
    run([room] {
        debug("%s\n", std::string(room, 'x').c_str());
        debug("%s\n", std::string(room + 1, 'y').c_str());
    });
    EXPECT_EQ("file.cpp:function:42: " + std::string(room, 'x') +
                  "\nfile.cpp:function:42: " + std::string(room, 'y') + "\n",
              logged("log"));
}

TEST_F(Trace, TruncatesALineWithTooLongAPrefix) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([] {
        std::string file(5000, 'f');
        OWB_Debug(file.data(), file.data(), 1, const_cast<char*>("x\n"));
    });
    EXPECT_EQ(std::string(1023 - 14 - 1, 'f') + "\n", logged("log"));
}

TEST_F(Trace, SupportsEveryConversionOfTheCLibrary) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([] {
        int length = 0;
        debug("abc%n%d\n", &length, 4);
        EXPECT_EQ(3, length);
        debug("%2$s %1$s\n", "a", "b");
    });
    EXPECT_EQ("file.cpp:function:42: abc4\nfile.cpp:function:42: b a\n", logged("log"));
}

TEST_F(Trace, LeaksNoDescriptorOfTheLogOrTheSwitchFile) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([] {
        const std::set<int> before = support::openDescriptors();
        debug("x\n");
        debug("x\n");
        EXPECT_EQ(before, support::openDescriptors());
    });
}

TEST_F(Trace, EndsALineWhoseMessageCannotBeFormatted) {
    m_directory.write("vdxDebug", m_directory.file("log"));
    run([] {
        debug("%ls\n", L"\x20ac"); // no such character in the C locale
        debug("next\n");
    });
    EXPECT_EQ("file.cpp:function:42: \nfile.cpp:function:42: next\n", logged("log"));
}

} // namespace
