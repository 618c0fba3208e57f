#include "output/Output.hpp"

#include "output/Text.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
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

/** Whether the terminal obeys no control sequences. */
bool isDumb() {
    const char* const terminal = std::getenv("TERM");
    return terminal != nullptr && std::strcmp(terminal, "dumb") == 0;
}

/** Size of a terminal; 24 lines of 80 columns if it is unknown. */
winsize sizeOf(int terminal) {
    winsize size{};
    if (ioctl(terminal, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0)
        return {24, 80, 0, 0};
    return size;
}

/** `text` as a whole terminal screen (ECMA-48): from the top, each line cut to the width and cleared after
 * the text. */
std::string screen(std::string_view text, const winsize& size) {
    std::size_t lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    std::string result = "\x1b[H";
    for (std::size_t line = 1; !text.empty(); ++line, --lines) {
        if (line + 1 == size.ws_row && lines > 1)
            return result + "(" + std::to_string(lines) + " more lines)\x1b[K\n\x1b[J";
        const std::size_t end = std::min(text.find('\n'), text.size());
        result += cut(text.substr(0, end), size.ws_col);
        result += "\x1b[K\n";
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result + "\x1b[J";
}

/** Discards messages if standard error is closed, so that no other file gets its number. */
void openStandardError() {
    if (fcntl(STDERR_FILENO, F_GETFD) >= 0)
        return;
    const int null = open("/dev/null", O_WRONLY);
    if (null < 0 || null == STDERR_FILENO)
        return;
    dup2(null, STDERR_FILENO);
    close(null);
}

int duplicateOfOutput() {
    openStandardError();
    return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

} // namespace

Output::Output()
    : m_descriptor(duplicateOfOutput()) {
    if (m_descriptor < 0)
        fail("cannot use standard output");
    if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        fail("cannot use standard error");
    // Line buffering keeps the library's lines in order with our own messages.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

Output::~Output() {
    std::fflush(stdout);
    dup2(m_descriptor, STDOUT_FILENO);
    close(m_descriptor);
}

void Output::write(std::string_view text) {
    m_isBegun = true;
    while (!text.empty()) {
        const ssize_t written = ::write(m_descriptor, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno == EAGAIN) // another user of the descriptor made it non-blocking
            waitWritable();
        else if (errno != EINTR)
            fail("cannot write standard output");
    }
}

void Output::waitWritable() const {
    pollfd waiting{m_descriptor, POLLOUT, 0};
    if (poll(&waiting, 1, -1) < 0 && errno != EINTR)
        fail("cannot write standard output");
}

void Output::redraw(std::string_view text) {
    write(screen(text, sizeOf(m_descriptor)));
}

bool Output::isTerminal() const {
    return isatty(m_descriptor) != 0;
}

bool Output::canRedraw() const {
    return isTerminal() && !isDumb();
}

std::size_t Output::terminalWidth() const {
    return isTerminal() ? sizeOf(m_descriptor).ws_col : 0;
}

Progress::Progress()
    : m_isOn(isatty(STDERR_FILENO) != 0 && !isDumb()) {}

void Progress::show(const std::string& text) {
    if (!m_isOn)
        return;
    std::cerr << clearLine << text << std::flush;
    m_isShown = true;
}

void Progress::clear() {
    if (m_isShown)
        std::cerr << clearLine << std::flush;
    m_isShown = false;
}

} // namespace owbctl
