#include "output/Deadline.hpp"

#include "output/Keyboard.hpp"
#include "output/Text.hpp"

#include <algorithm>
#include <csignal>
#include <ctime>
#include <poll.h>
#include <sstream>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace owbctl {
namespace {

/** Seconds of waiting without a line that says so. */
constexpr double quietTime = 2;

/** State of the signal handler. Changed only while the signal is blocked. */
struct Clock {
    TimeLimit limit{0, false};
    Expiry expiry{};
    const Output* output = nullptr;
    bool isTerminal = false;

    /** Moments of the monotonic clock, in seconds; 0 for none. */
    double end = 0;
    double waitingSince = 0;
    bool isLineShown = false;

    std::string lastMessage;
    std::string lastDocument;
    std::string waitingLine;
};

Clock state;

double now() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// The functions up to onAlarm() are async-signal-safe and non-blocking. An error cannot be reported any more.

void writeIfPossible(int descriptor, const char* text, std::size_t size) {
    pollfd waiting{descriptor, POLLOUT, 0};
    if (::poll(&waiting, 1, 0) == 1 && ::write(descriptor, text, size) < 0)
        return;
}

void writeIfPossible(int descriptor, const std::string& text) {
    writeIfPossible(descriptor, text.data(), text.size());
}

void writeNumber(unsigned number) {
    char digits[16];
    char* const end = digits + sizeof digits;
    char* next = end;
    do {
        *--next = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number > 0);
    writeIfPossible(STDERR_FILENO, next, static_cast<std::size_t>(end - next));
}

void showWaiting(double seconds) {
    state.isLineShown = true;
    writeIfPossible(STDERR_FILENO, state.waitingLine);
    writeNumber(static_cast<unsigned>(seconds));
    writeIfPossible(STDERR_FILENO, " s)", 3);
}

void expire() {
    writeIfPossible(STDERR_FILENO, state.lastMessage);
    if (!state.output->isBegun())
        writeIfPossible(state.output->descriptor(), state.lastDocument);
    restoreTerminal();
    ::_exit(exitTimeout);
}

/** Sets the timer for the end of the time or the next change of the line, whichever is first. */
void setTimer() {
    const double time = now();
    double next = state.end;
    if (state.isTerminal && state.waitingSince > 0) {
        const double waited = time - state.waitingSince;
        const double change =
            state.waitingSince + (waited < quietTime ? quietTime : static_cast<int>(waited + 0.001) + 1);
        next = next > 0 ? std::min(next, change) : change;
    }
    itimerval timer{};
    if (next > 0) {
        const double left = std::max(next - time, 1e-5);
        timer.it_value.tv_sec = static_cast<time_t>(left);
        timer.it_value.tv_usec = static_cast<suseconds_t>((left - static_cast<long>(left)) * 1e6);
    }
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

void onAlarm(int) {
    const double time = now() + 0.001; // the timer has another resolution than the clock
    if (state.end > 0 && time >= state.end)
        expire();
    if (state.isTerminal && state.waitingSince > 0 && time - state.waitingSince >= quietTime)
        showWaiting(time - state.waitingSince);
    setTimer();
}

/** Blocks the signal in its scope. */
class Blocked {
public:
    Blocked() { change(SIG_BLOCK); }
    ~Blocked() { change(SIG_UNBLOCK); }
    Blocked(const Blocked&) = delete;
    Blocked& operator=(const Blocked&) = delete;

private:
    static void change(int how) {
        sigset_t alarm;
        sigemptyset(&alarm);
        sigaddset(&alarm, SIGALRM);
        sigprocmask(how, &alarm, nullptr);
    }
};

void setMessage(const std::string& waitedFor) {
    const std::string text =
        timeoutText(state.limit.seconds) + (waitedFor.empty() ? "" : ", waiting for " + waitedFor);
    state.lastMessage = (state.isTerminal ? clearLine : "") + ("owbctl: " + text + '\n');
    if (state.expiry.document)
        state.lastDocument = state.expiry.document(text);
    state.waitingLine = clearLine + ("owbctl: waiting for " + waitedFor) + " (";
}

} // namespace

std::string timeoutText(double seconds) {
    std::ostringstream text;
    text << "timed out after " << seconds << " s";
    return text.str();
}

void limitTime(const TimeLimit& limit, Expiry expiry, const Output& output) {
    const Blocked blocked;
    state.limit = limit;
    state.expiry = std::move(expiry);
    state.output = &output;
    state.isTerminal = ::isatty(STDERR_FILENO) != 0;
    setMessage("");
    if (limit.seconds > 0 && !limit.isForEachWait)
        state.end = now() + limit.seconds;
    std::signal(SIGALRM, onAlarm);
    setTimer();
}

Waiting::Waiting(long group)
    : Waiting(printable(state.expiry.peer) + ", group " + std::to_string(group)) {}

Waiting::Waiting(const std::string& what) {
    const Blocked blocked;
    setMessage(what);
    state.waitingSince = now();
    if (state.limit.isForEachWait && state.limit.seconds > 0)
        state.end = state.waitingSince + state.limit.seconds;
    setTimer();
}

Waiting::~Waiting() {
    const Blocked blocked;
    state.waitingSince = 0;
    if (state.limit.isForEachWait)
        state.end = 0;
    if (state.isLineShown)
        writeIfPossible(STDERR_FILENO, clearLine);
    state.isLineShown = false;
    setMessage("");
    setTimer();
}

} // namespace owbctl
