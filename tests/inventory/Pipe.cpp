#include "inventory/Pipe.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

Pipe::Pipe(const std::string& path, std::vector<std::string> pieces, std::function<void()> meanwhile)
    : m_pieces(std::move(pieces))
    , m_meanwhile(std::move(meanwhile)) {
    EXPECT_EQ(0, ::mkfifo(path.c_str(), 0600)) << path;
    m_thread = std::thread([this, path] { write(path); });
}

Pipe::~Pipe() {
    m_thread.join();
}

void Pipe::write(const std::string& path) const {
    sigset_t brokenPipe; // the reader may close early
    ::sigemptyset(&brokenPipe);
    ::sigaddset(&brokenPipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    const int pipe = ::open(path.c_str(), O_WRONLY | O_CLOEXEC); // waits for the reader
    EXPECT_EQ(0, ::fcntl(pipe, F_SETFL, O_DIRECT));
    if (m_meanwhile)
        m_meanwhile();
    for (const std::string& piece : m_pieces) {
        const ssize_t count = ::write(pipe, piece.data(), piece.size());
        EXPECT_TRUE(count == static_cast<ssize_t>(piece.size()) || errno == EPIPE) << count;
    }
    ::close(pipe);
}
