#include "doctor/BoundedCheck.hpp"

#include "util/Descriptor.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <exception>
#include <limits>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace owbctl {
namespace {

// Between two processes of one program, so sizes and numbers have the same form.

void append(std::string& bytes, const std::string& text) {
    const std::size_t size = text.size();
    bytes.append(reinterpret_cast<const char*>(&size), sizeof size).append(text);
}

std::string encoded(const std::vector<Check>& checks) {
    std::string bytes;
    for (const Check& check : checks) {
        bytes += static_cast<char>(check.result);
        append(bytes, check.name);
        append(bytes, check.finding);
        append(bytes, check.advice);
    }
    return bytes;
}

std::string cutText(std::string& bytes) {
    std::size_t size = 0;
    std::memcpy(&size, bytes.data(), sizeof size);
    std::string text = bytes.substr(sizeof size, size);
    bytes.erase(0, sizeof size + size);
    return text;
}

std::vector<Check> decoded(std::string bytes) {
    std::vector<Check> checks;
    while (!bytes.empty()) {
        Check check{static_cast<Check::Result>(bytes.front()), {}, {}, {}};
        bytes.erase(0, 1);
        check.name = cutText(bytes);
        check.finding = cutText(bytes);
        check.advice = cutText(bytes);
        checks.push_back(std::move(check));
    }
    return checks;
}

[[noreturn]] void answer(int pipe, const std::function<std::vector<Check>()>& checks) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    try {
        std::string bytes = encoded(checks());
        while (!bytes.empty()) {
            const ssize_t written = ::write(pipe, bytes.data(), bytes.size());
            if (written < 0)
                ::_exit(1);
            bytes.erase(0, static_cast<std::size_t>(written));
        }
        ::_exit(0);
    } catch (const std::exception&) {
        ::_exit(1);
    }
}

int millisecondsUntil(const CheckDeadline& deadline) {
    if (!deadline)
        return -1;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(*deadline - std::chrono::steady_clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

/** Reads up to the end of a pipe; nothing if the deadline comes first. */
std::optional<std::string> readUntil(const CheckDeadline& deadline, int pipe) {
    std::string bytes;
    for (;;) {
        pollfd waiting{pipe, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, millisecondsUntil(deadline));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return std::nullopt;
        char buffer[4096];
        const ssize_t size = ::read(pipe, buffer, sizeof buffer);
        if (size <= 0)
            return bytes;
        bytes.append(buffer, static_cast<std::size_t>(size));
    }
}

/** Waits for the end of a child. Returns whether it succeeded. */
bool hasSucceeded(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::optional<std::vector<Check>> checksBefore(const CheckDeadline& deadline,
                                               const std::function<std::vector<Check>()>& checks) {
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::system_error(errno, std::generic_category(), "cannot check");
    const util::Descriptor reading(ends[0]);
    util::Descriptor writing(ends[1]);
    const pid_t child = ::fork();
    if (child < 0)
        throw std::system_error(errno, std::generic_category(), "cannot check");
    if (child == 0)
        answer(writing.number(), checks);
    writing.reset();
    std::optional<std::string> bytes = readUntil(deadline, reading.number());
    if (!bytes)
        ::kill(child, SIGKILL);
    const bool isComplete = hasSucceeded(child);
    if (!bytes)
        return std::nullopt;
    if (!isComplete)
        throw std::runtime_error("a check has failed");
    return decoded(std::move(*bytes));
}

} // namespace owbctl
