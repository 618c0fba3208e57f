#include "output/Keyboard.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace owbctl {
namespace {

constexpr int endingSignals[] = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM, SIGPIPE,
                                 SIGABRT, SIGSEGV, SIGBUS,  SIGFPE,  SIGILL};

// State of the signal handlers.
termios modeBefore;
volatile std::sig_atomic_t isChanged = 0;

bool isForeground() {
    return ::tcgetpgrp(STDIN_FILENO) == ::getpgrp();
}

/** Changes the mode, in the foreground only: in the background this would stop the process. */
void changeTerminal() {
    if (isChanged != 0 || !isForeground() || ::tcgetattr(STDIN_FILENO, &modeBefore) != 0)
        return;
    termios mode = modeBefore;
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    isChanged = 1; // first: a signal may follow the change at once
    ::tcsetattr(STDIN_FILENO, TCSANOW, &mode);
}

// The handler is reset before it is called (SA_RESETHAND), and the signal is delivered again at its return.
void onEnd(int signal) {
    restoreTerminal();
    ::raise(signal);
}

void onStop(int) {
    restoreTerminal();
    ::raise(SIGSTOP);
    changeTerminal(); // continued
}

/** Sets a handler, except for a signal that is ignored. */
void handle(int signal, void (*handler)(int), int flags) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void restoreTerminal() {
    if (isChanged != 0)
        ::tcsetattr(STDIN_FILENO, TCSANOW, &modeBefore);
    isChanged = 0;
}

Keyboard::Keyboard(bool isUsed)
    : m_isOpen(isUsed && ::isatty(STDIN_FILENO) != 0) {
    if (!m_isOpen)
        return;
    for (const int signal : endingSignals)
        handle(signal, onEnd, SA_RESETHAND);
    handle(SIGTSTP, onStop, SA_RESTART);
    changeTerminal();
}

// The handlers stay: they do nothing to a terminal that is restored.
Keyboard::~Keyboard() {
    restoreTerminal();
}

bool Keyboard::waitFor(char key, Clock::time_point end) {
    for (auto left = end - Clock::now(); left > Clock::duration::zero(); left = end - Clock::now()) {
        const bool isListening = m_isOpen && isForeground();
        if (isListening)
            changeTerminal(); // the process may have come from the background
        pollfd input{isListening ? STDIN_FILENO : -1, POLLIN, 0};
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        const int ready = ::poll(&input, 1, static_cast<int>(std::min<long long>(wait, 1000)));
        if (ready == 1 && isPressed(key))
            return true;
    }
    return false;
}

bool Keyboard::isPressed(char key) {
    char keys[64];
    const ssize_t count = ::read(STDIN_FILENO, keys, sizeof keys);
    if (count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN))
        m_isOpen = false; // the terminal is gone
    return count > 0 && std::find(keys, keys + count, key) != keys + count;
}

} // namespace owbctl
