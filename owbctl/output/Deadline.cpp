#include "output/Deadline.hpp"

#include "output/Keyboard.hpp"

#include <csignal>
#include <poll.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace owbctl {
namespace {

// State of the signal handler; set before the timer starts.
std::string lastMessage;
std::string lastDocument;
const Output* lastOutput = nullptr;

// Async-signal-safe and non-blocking. An error cannot be reported any more.
void writeIfPossible(int descriptor, const std::string& text) {
    pollfd waiting{descriptor, POLLOUT, 0};
    if (::poll(&waiting, 1, 0) == 1 && ::write(descriptor, text.data(), text.size()) < 0)
        return;
}

void end(int) {
    writeIfPossible(STDERR_FILENO, lastMessage);
    if (!lastOutput->isBegun())
        writeIfPossible(lastOutput->descriptor(), lastDocument);
    restoreTerminal();
    ::_exit(exitTimeout);
}

} // namespace

void endAfter(double seconds, std::string message, std::string document, const Output& output) {
    lastMessage = ::isatty(STDERR_FILENO) != 0 ? clearLine + message : std::move(message);
    lastDocument = std::move(document);
    lastOutput = &output;
    std::signal(SIGALRM, end);
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    sigprocmask(SIG_UNBLOCK, &alarm, nullptr);

    itimerval timer{};
    timer.it_value.tv_sec = static_cast<time_t>(seconds);
    timer.it_value.tv_usec =
        static_cast<suseconds_t>((seconds - static_cast<double>(timer.it_value.tv_sec)) * 1e6);
    setitimer(ITIMER_REAL, &timer, nullptr);
}

} // namespace owbctl
