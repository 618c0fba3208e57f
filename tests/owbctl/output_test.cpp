#include "output/Output.hpp"
#include "support/Child.hpp"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace owbctl_test {
namespace {

/** Reads a pipe to its end, in pieces so small that the pipe is full most of the time. */
std::string readSlowly(int descriptor) {
    std::string text;
    char piece[16];
    for (ssize_t size = read(descriptor, piece, sizeof piece); size > 0;
         size = read(descriptor, piece, sizeof piece))
        text.append(piece, static_cast<std::size_t>(size));
    return text;
}

TEST(Output, ANonBlockingPipeReceivesTheWholeText) {
    support::inChild("/", [] {
        const std::string text(200000, 'x');
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        ASSERT_EQ(fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
        dup2(ends[1], STDOUT_FILENO);
        close(ends[1]);
        std::string arrived;
        std::thread reader([&] { arrived = readSlowly(ends[0]); });
        EXPECT_NO_THROW(owbctl::Output().write(text));
        close(STDOUT_FILENO);
        reader.join();
        EXPECT_EQ(arrived.size(), text.size());
    });
}

} // namespace
} // namespace owbctl_test
