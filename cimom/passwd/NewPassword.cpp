#include "passwd/NewPassword.hpp"

#include "users/PasswordHash.hpp"
#include "util/Ascii.hpp"

#include <cerrno>
#include <csignal>
#include <iostream>
#include <poll.h>
#include <stdexcept>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace cimom {
namespace {

const int terminal = STDIN_FILENO;

volatile std::sig_atomic_t endedBy = 0;

void noteSignal(int number) {
    endedBy = number;
}

/** For a scope: signals interrupt only waitForInput(), and have their effect at the end of the scope. */
class DeferredSignals {
public:
    DeferredSignals() {
        struct sigaction note {};
        note.sa_handler = noteSignal;
        sigset_t held;
        ::sigemptyset(&held);
        for (const int number : numbers)
            ::sigaddset(&held, number);
        ::sigprocmask(SIG_BLOCK, &held, &m_maskBefore);
        for (std::size_t i = 0; i < count; ++i)
            ::sigaction(numbers[i], &note, &m_before[i]);
    }
    ~DeferredSignals() {
        for (std::size_t i = 0; i < count; ++i)
            ::sigaction(numbers[i], &m_before[i], nullptr);
        if (endedBy != 0)
            std::raise(endedBy);
        ::sigprocmask(SIG_SETMASK, &m_maskBefore, nullptr);
    }
    /** Waits for a byte or the end of standard input. Throws std::system_error if a signal interrupts it. */
    void waitForInput() const {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (::ppoll(&input, 1, nullptr, &m_maskBefore) < 0)
            throw std::system_error(errno, std::generic_category(), "standard input");
    }
    DeferredSignals(const DeferredSignals&) = delete;
    DeferredSignals& operator=(const DeferredSignals&) = delete;

private:
    static constexpr std::size_t count = 4;
    static constexpr int numbers[count] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};
    struct sigaction m_before[count];
    sigset_t m_maskBefore;
};

/** Turns the echo of the terminal off for a scope. */
class EchoOff {
public:
    EchoOff() {
        if (::tcgetattr(terminal, &m_before) != 0)
            throw std::system_error(errno, std::generic_category(), "terminal");
        termios hidden = m_before;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        hidden.c_lflag |= ECHONL;
        ::tcsetattr(terminal, TCSAFLUSH, &hidden);
    }
    ~EchoOff() { ::tcsetattr(terminal, TCSAFLUSH, &m_before); }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

private:
    termios m_before;
};

/** Reads a line of standard input, byte by byte: what follows it stays unread. */
std::string readLine() {
    std::string line;
    for (char c = '\0';;) {
        const ssize_t size = ::read(STDIN_FILENO, &c, 1);
        if (size < 0)
            throw std::system_error(errno, std::generic_category(), "standard input");
        if (size == 0 && line.empty())
            throw std::runtime_error("password: no input");
        if (size == 0 || c == '\n')
            return line;
        line += c;
        if (line.size() > maximumPassword)
            throw std::runtime_error("password: longer than " + std::to_string(maximumPassword) + " bytes");
    }
}

/** Asks for a line. A terminal delivers whole lines, so one wait is enough. */
std::string ask(const char* prompt, const DeferredSignals& signals) {
    std::cerr << prompt << std::flush;
    signals.waitForInput();
    return readLine();
}

std::string askTwice() {
    const DeferredSignals signals;
    const EchoOff hidden;
    std::string password = ask("New password: ", signals);
    if (ask("Retype new password: ", signals) != password)
        throw std::runtime_error("passwords do not match");
    return password;
}

} // namespace

std::string newPassword() {
    std::string password = ::isatty(terminal) != 0 ? askTwice() : readLine();
    if (password.empty())
        throw std::runtime_error("password: empty");
    if (ascii::holdsControls(password))
        throw std::runtime_error("password: contains a control character");
    return password;
}

} // namespace cimom
