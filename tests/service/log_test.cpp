#include "service/Log.hpp"

#include "support/Pattern.hpp"

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace service;

namespace {

const char* const timeForm = R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[+-]\d\d:\d\d )";

/** Replaces standard error by a pipe that the test reads on demand. */
class Errors {
public:
    Errors()
        : m_real(::dup(STDERR_FILENO)) {
        nameLog("program");
        int ends[2];
        EXPECT_EQ(0, ::pipe2(ends, O_CLOEXEC));
        m_reading = ends[0];
        ::fcntl(m_reading, F_SETFL, O_NONBLOCK);
        ::dup2(ends[1], STDERR_FILENO);
        ::close(ends[1]);
    }
    ~Errors() {
        ::dup2(m_real, STDERR_FILENO);
        ::close(m_real);
        ::close(m_reading);
    }

    /** Fills the pipe. */
    void fill() const {
        const int flags = ::fcntl(STDERR_FILENO, F_GETFL);
        ::fcntl(STDERR_FILENO, F_SETFL, flags | O_NONBLOCK);
        const std::string some(4096, 'x');
        while (::write(STDERR_FILENO, some.data(), some.size()) > 0) {
        }
        ::fcntl(STDERR_FILENO, F_SETFL, flags);
    }
    /** The text written since the last call, without the times of the lines. */
    std::string read() const { return support::replacedAll(readAsItIs(), timeForm, ""); }
    std::string readAsItIs() const {
        std::string all;
        char bytes[65536];
        for (ssize_t size = 0; (size = ::read(m_reading, bytes, sizeof bytes)) > 0;)
            all.append(bytes, static_cast<std::size_t>(size));
        return all;
    }

private:
    int m_real;
    int m_reading;
};

} // namespace

TEST(Log, ALineBeginsWithTheLocalTime) {
    ::setenv("TZ", "XXX-5:30", 1);
    ::tzset();
    const Errors errors;
    log("one");
    ::unsetenv("TZ");
    ::tzset();
    const std::string line = errors.readAsItIs();
    EXPECT_TRUE(support::matches(line, std::string(timeForm) + "program: one\n")) << line;
    EXPECT_EQ("+05:30", line.substr(19, 6));
    std::tm said{};
    ASSERT_TRUE(::strptime(line.c_str(), "%FT%T%z", &said));
    const long offset = said.tm_gmtoff;
    EXPECT_LE(std::abs(std::time(nullptr) - (::timegm(&said) - offset)), 60);
}

TEST(Log, ALineForTheJournalHasNoTime) {
    const Errors errors;
    struct stat file;
    ASSERT_EQ(0, ::fstat(STDERR_FILENO, &file));
    const std::string name = std::to_string(file.st_dev) + ":" + std::to_string(file.st_ino);
    ::setenv("JOURNAL_STREAM", name.c_str(), 1);
    log("one");
    ::setenv("JOURNAL_STREAM", (name + "1").c_str(), 1);
    log("two");
    ::unsetenv("JOURNAL_STREAM");
    const std::string lines = errors.readAsItIs();
    EXPECT_TRUE(support::matches(lines, "program: one\n" + std::string(timeForm) + "program: two\n"))
        << lines;
}

TEST(Log, WhatIsNotAsciiIsEscaped) {
    const Errors errors;
    log("a\x7f\xc2\x85 \x9b[2J \xff");
    EXPECT_EQ("program: a \\xc2\\x85 \\x9b[2J \\xff\n", errors.read());
    log(std::string(1000, '\xe4'));
    EXPECT_EQ(std::string("program: \n").size() + 1024, errors.read().size());
}

TEST(Log, TheProgramNamePrecedesTheMessage) {
    const Errors errors;
    log("one\ntwo");
    EXPECT_EQ("program: one two\n", errors.read());
}

TEST(Log, ALineThatCannotBeWrittenIsLostAndCounted) {
    const Errors errors;
    errors.fill();
    log("first");
    log("second");
    errors.read();
    log("third");
    EXPECT_EQ("program: lines lost: 2\nprogram: third\n", errors.read());
    log("fourth");
    EXPECT_EQ("program: fourth\n", errors.read());
}

TEST(Log, ALineWithoutMemoryIsCut) {
    const Errors errors;
    logWithoutMemory("what", ("why\x9b" + std::string(300, 'y')).c_str());
    EXPECT_EQ("program: what: why " + std::string(245, 'y') + "\n", errors.read());
    errors.fill();
    logWithoutMemory("what", "why");
    errors.read();
    log("next");
    EXPECT_EQ("program: lines lost: 1\nprogram: next\n", errors.read());
}
