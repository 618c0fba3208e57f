#include "output/Deadline.hpp"

#include <csignal>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace owbctl {
namespace {

// What the handler needs; set before the timer runs.
std::string lastMessage;
std::string lastDocument;
const Output* lastOutput = nullptr;

// Calls nothing but what signal-safety(7) allows. There is nobody left to tell of an error.
void writeAll(int descriptor, const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t written = ::write(descriptor, text.data() + done, text.size() - done);
        if (written < 0)
            return;
        done += static_cast<std::size_t>(written);
    }
}

void end(int) {
    writeAll(STDERR_FILENO, lastMessage);
    if (!lastOutput->isBegun())
        writeAll(lastOutput->descriptor(), lastDocument);
    ::_exit(exitTimeout);
}

} // namespace

void endAfter(double seconds, std::string message, std::string document, const Output& output) {
    lastMessage = std::move(message);
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
