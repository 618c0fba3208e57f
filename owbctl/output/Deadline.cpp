#include "output/Deadline.hpp"

#include "output/Progress.hpp"

#include <csignal>
#include <poll.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace owbctl {
namespace {

// What the handler needs; set before the timer runs.
std::string lastMessage;
std::string lastDocument;
const Output* lastOutput = nullptr;

// Calls nothing but what signal-safety(7) allows, and waits for nobody. There is nobody left to tell of an
// error.
void writeIfTaken(int descriptor, const std::string& text) {
    pollfd taking{descriptor, POLLOUT, 0};
    if (::poll(&taking, 1, 0) == 1 && ::write(descriptor, text.data(), text.size()) < 0)
        return;
}

void end(int) {
    writeIfTaken(STDERR_FILENO, lastMessage);
    if (!lastOutput->isBegun())
        writeIfTaken(lastOutput->descriptor(), lastDocument);
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
