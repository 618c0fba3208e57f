#include "system/Log.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

using namespace cimom;

namespace {

/** Standard error as a pipe that is read when the test wants to. */
class Errors {
public:
    Errors()
        : m_real(::dup(STDERR_FILENO)) {
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

    /** Lets it take nothing more. */
    void fill() const {
        const int flags = ::fcntl(STDERR_FILENO, F_GETFL);
        ::fcntl(STDERR_FILENO, F_SETFL, flags | O_NONBLOCK);
        const std::string some(4096, 'x');
        while (::write(STDERR_FILENO, some.data(), some.size()) > 0) {
        }
        ::fcntl(STDERR_FILENO, F_SETFL, flags);
    }
    /** What has been written since the last time. */
    std::string read() const {
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

TEST(Log, ALineStandsBehindTheNameOfTheProgram) {
    const Errors errors;
    log("one\ntwo");
    EXPECT_EQ("owbcimomd: one two\n", errors.read());
}

TEST(Log, ALineThatNobodyTakesIsLostAndCounted) {
    const Errors errors;
    errors.fill();
    log("first");
    log("second");
    errors.read();
    log("third");
    EXPECT_EQ("owbcimomd: lines lost: 2\nowbcimomd: third\n", errors.read());
    log("fourth");
    EXPECT_EQ("owbcimomd: fourth\n", errors.read());
}

TEST(Log, ALineWithoutMemoryIsCut) {
    const Errors errors;
    logWithoutMemory("what", ("why\n" + std::string(300, 'y')).c_str());
    EXPECT_EQ("owbcimomd: what: why " + std::string(245, 'y') + "\n", errors.read());
    errors.fill();
    logWithoutMemory("what", "why");
    errors.read();
    log("next");
    EXPECT_EQ("owbcimomd: lines lost: 1\nowbcimomd: next\n", errors.read());
}
