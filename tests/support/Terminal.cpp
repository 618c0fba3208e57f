#include "support/Terminal.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace support {
namespace {

constexpr char escape = '\x1b';

std::size_t characterLength(char lead) {
    const unsigned char byte = static_cast<unsigned char>(lead);
    return byte < 0x80 ? 1 : byte < 0xe0 ? 2 : byte < 0xf0 ? 3 : 4;
}

/** Length of the sequence at the start of a text; 0 if its end has not arrived. */
std::size_t sequenceLength(std::string_view text) {
    if (text.size() < 2)
        return 0;
    if (text[1] != '[')
        return 2;
    for (std::size_t i = 2; i < text.size(); ++i) {
        if (text[i] >= '@' && text[i] <= '~')
            return i + 1;
    }
    return 0;
}

/** Makes the terminal the controlling one of a new session, as a login does, and its three standard streams.
 */
void attach(const char* name) {
    ::setsid();
    const int terminal = ::open(name, O_RDWR);
    ::ioctl(terminal, TIOCSCTTY, 0);
    for (int stream = 0; stream <= 2; ++stream)
        ::dup2(terminal, stream);
    if (terminal > 2)
        ::close(terminal);
}

int exitCodeOf(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

Screen::Screen(std::size_t columns)
    : m_columns(columns) {}

void Screen::show(std::string_view bytes) {
    std::string all = std::exchange(m_pending, {});
    all += bytes;
    std::string_view rest = all;
    while (!rest.empty()) {
        const bool isSequence = rest.front() == escape;
        const std::size_t length = isSequence ? sequenceLength(rest) : characterLength(rest.front());
        if (length == 0 || length > rest.size()) {
            m_pending = rest;
            return;
        }
        const std::string_view first = rest.substr(0, length);
        if (isSequence && length > 2)
            control(first.back(), first.substr(2, length - 3));
        else if (first == "\n")
            ++m_row;
        else if (first == "\r")
            m_column = 0;
        else if (!isSequence)
            put(std::string(first));
        rest.remove_prefix(length);
    }
}

void Screen::control(char final, std::string_view parameters) {
    if (!parameters.empty())
        return;
    if (final == 'H')
        m_row = m_column = 0;
    if (final == 'K' || final == 'J')
        line().resize(std::min(line().size(), m_column));
    if (final == 'J')
        m_lines.resize(m_row + 1);
}

void Screen::put(std::string character) {
    if (m_column == m_columns) {
        ++m_row;
        m_column = 0;
    }
    if (line().size() <= m_column)
        line().resize(m_column + 1, " ");
    line()[m_column++] = std::move(character);
}

std::vector<std::string>& Screen::line() {
    if (m_lines.size() <= m_row)
        m_lines.resize(m_row + 1);
    return m_lines[m_row];
}

std::string Screen::text() const {
    std::string text;
    for (const std::vector<std::string>& line : m_lines) {
        for (const std::string& character : line)
            text += character;
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

Terminal::Terminal(const std::vector<std::string>& command, unsigned short columns, unsigned short lines)
    : m_descriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    , m_screen(columns) {
    const winsize size{lines, columns, 0, 0};
    if (m_descriptor < 0 || ::grantpt(m_descriptor) != 0 || ::unlockpt(m_descriptor) != 0 ||
        ::ioctl(m_descriptor, TIOCSWINSZ, &size) != 0)
        throw std::runtime_error("no pseudo-terminal");
    const std::string name = ::ptsname(m_descriptor);
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    m_pid = ::fork();
    if (m_pid < 0)
        throw std::runtime_error("fork failed");
    if (m_pid == 0) {
        attach(name.c_str());
        ::setenv("TERM", "xterm", 1);
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
}

Terminal::~Terminal() {
    if (m_pid > 0) {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    ::close(m_descriptor);
}

void Terminal::type(std::string_view keys) const {
    if (::write(m_descriptor, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw std::runtime_error("cannot write to the terminal");
}

void Terminal::signal(int number) const {
    ::kill(m_pid, number);
}

bool Terminal::waitFor(const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (screen().find(text) == std::string::npos) {
        if (!receive(100) || std::chrono::steady_clock::now() > end)
            return screen().find(text) != std::string::npos;
    }
    return true;
}

int Terminal::wait() {
    while (receive(-1)) {
    }
    int status = 0;
    while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
    }
    m_pid = -1;
    return exitCodeOf(status);
}

// Waits for output. False once no process has the terminal open any more: then the read fails with EIO.
bool Terminal::receive(int milliseconds) {
    pollfd waiting{m_descriptor, POLLIN, 0};
    if (::poll(&waiting, 1, milliseconds) <= 0)
        return true;
    char buffer[4096];
    const ssize_t count = ::read(m_descriptor, buffer, sizeof buffer);
    if (count <= 0)
        return count < 0 && errno == EINTR;
    const std::string_view bytes(buffer, static_cast<std::size_t>(count));
    m_bytes += bytes;
    m_screen.show(bytes);
    return true;
}

} // namespace support
