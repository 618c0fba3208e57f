#include "passwd/NewPassword.hpp"

#include "system/Text.hpp"
#include "users/PasswordHash.hpp"

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

/** Has signals arrive only in waitForInput() for a scope, end that, and then do what they would have done. */
class SignalsNoted {
public:
    SignalsNoted() {
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
    ~SignalsNoted() {
        for (std::size_t i = 0; i < count; ++i)
            ::sigaction(numbers[i], &m_before[i], nullptr);
        if (endedBy != 0)
            std::raise(endedBy);
        ::sigprocmask(SIG_SETMASK, &m_maskBefore, nullptr);
    }
    /** Waits for a byte or the end of standard input. Throws std::system_error when a signal comes instead.
     */
    void waitForInput() const {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (::ppoll(&input, 1, nullptr, &m_maskBefore) < 0)
            throw std::system_error(errno, std::generic_category(), "standard input");
    }
    SignalsNoted(const SignalsNoted&) = delete;
    SignalsNoted& operator=(const SignalsNoted&) = delete;

private:
    static constexpr std::size_t count = 4;
    static constexpr int numbers[count] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};
    struct sigaction m_before[count];
    sigset_t m_maskBefore;
};

/** Does not show what is typed for a scope. */
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

/** A line of standard input without its end; its bytes one by one, so that nothing behind it is taken. */
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
        if (line.size() > longestPassword)
            throw std::runtime_error("password: longer than " + std::to_string(longestPassword) + " bytes");
    }
}

// A terminal hands out whole lines, so it is enough to wait once.
std::string ask(const char* prompt, const SignalsNoted& signals) {
    std::cerr << prompt << std::flush;
    signals.waitForInput();
    return readLine();
}

std::string askTwice() {
    const SignalsNoted signals;
    const EchoOff hidden;
    const std::string password = ask("New password: ", signals);
    if (ask("Once more: ", signals) != password)
        throw std::runtime_error("password: the two differ");
    return password;
}

} // namespace

std::string newPassword() {
    const std::string password = ::isatty(terminal) != 0 ? askTwice() : readLine();
    if (password.empty())
        throw std::runtime_error("password: empty");
    if (holdsControls(password))
        throw std::runtime_error("password: holds a control character");
    return password;
}

} // namespace cimom
