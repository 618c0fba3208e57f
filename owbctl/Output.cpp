#include "Output.hpp"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace owbctl {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

Output::Output()
    : m_descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
    if (m_descriptor < 0)
        fail("standard output");
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        fail("standard error");
    // The library's lines then stand in order with our own messages.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

Output::~Output() {
    std::fflush(stdout);
    dup2(m_descriptor, STDOUT_FILENO);
    close(m_descriptor);
}

void Output::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(m_descriptor, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno == EAGAIN) // whoever shares the descriptor has made it non-blocking
            waitWritable();
        else if (errno != EINTR)
            fail("standard output");
    }
}

void Output::waitWritable() const {
    pollfd waiting{m_descriptor, POLLOUT, 0};
    if (poll(&waiting, 1, -1) < 0 && errno != EINTR)
        fail("standard output");
}

std::size_t Output::terminalWidth() const {
    winsize size{};
    if (!isatty(m_descriptor))
        return 0;
    const bool known = ioctl(m_descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

} // namespace owbctl
