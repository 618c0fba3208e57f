#include "Output.hpp"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace owbctl {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

Output::Output()
    : descriptor_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
    if (descriptor_ < 0)
        fail("standard output");
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        fail("standard error");
    // The library's lines then stand in order with our own messages.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

Output::~Output() {
    std::fflush(stdout);
    dup2(descriptor_, STDOUT_FILENO);
    close(descriptor_);
}

void Output::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            fail("standard output");
    }
}

std::size_t Output::terminalWidth() const {
    winsize size{};
    if (!isatty(descriptor_))
        return 0;
    const bool known = ioctl(descriptor_, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

} // namespace owbctl
