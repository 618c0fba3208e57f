#include "service/ChildProcess.hpp"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

using namespace service;

namespace {

/** The bytes that a child writes before its pipe ends. */
std::string outputOf(ChildProcess& child) {
    const util::Descriptor pipe(child.releasePipe());
    std::string output;
    EXPECT_TRUE(util::readAll(pipe, output));
    return output;
}

} // namespace

TEST(ChildProcess, ItsOutputArrivesAndItSucceeds) {
    ChildProcess child([](int pipe) { return writeAll(pipe, "one") && writeAll(pipe, " two"); });
    EXPECT_EQ("one two", outputOf(child));
    EXPECT_TRUE(child.wait());
    EXPECT_FALSE(child.wait()) << "it has ended";
}

TEST(ChildProcess, ThatThrowsOrReturnsFalseHasFailed) {
    ChildProcess throwing([](int pipe) -> bool {
        writeAll(pipe, "one");
        throw std::runtime_error("x");
    });
    EXPECT_EQ("one", outputOf(throwing));
    EXPECT_FALSE(throwing.wait());
    ChildProcess failing([](int) { return false; });
    EXPECT_FALSE(failing.wait());
}

TEST(ChildProcess, ThatIsStoppedIsKilled) {
    ChildProcess child([](int pipe) {
        writeAll(pipe, "x");
        ::raise(SIGSTOP);
        return true;
    });
    const util::Descriptor pipe(child.releasePipe());
    char byte = 0;
    ASSERT_EQ(1, ::read(pipe.number(), &byte, 1));
    child.kill();
    EXPECT_FALSE(child.wait());
    EXPECT_EQ(0, ::read(pipe.number(), &byte, 1));
}

TEST(ChildProcess, HasOnlyItsPipe) {
    ChildProcess child([](int pipe) {
        std::string open;
        for (int number = 0; number < 64; ++number)
            open += ::fcntl(number, F_GETFD) >= 0 && number != pipe ? 'x' : '.';
        return writeAll(pipe, open);
    });
    EXPECT_EQ(std::string(64, '.'), outputOf(child));
}
