#include "service/ChildProcess.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace service {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/** Blocks all signals for a scope. */
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        ::sigprocmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsBlocked() { ::sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t m_before;
};

/** Closes the child's copies of the parent's connections and locks: they end when the parent closes its own.
 */
void closeAllBut(int descriptor) {
    const auto number = static_cast<unsigned>(descriptor);
    if (number > 0)
        ::close_range(0, number - 1, 0);
    ::close_range(number + 1, ~0U, 0);
}

/** Runs in the child. Signals stay blocked: their handlers are those of the parent. */
[[noreturn]] void runChild(const std::function<bool()>& work, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) // it ended before prctl()
        ::_exit(1);
    try {
        ::_exit(work() ? 0 : 1);
    } catch (...) {
        ::_exit(1);
    }
}

std::array<int, 2> createPipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        fail("pipe");
    return ends;
}

} // namespace

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t size = ::write(descriptor, bytes.data(), bytes.size());
        if (size < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
    return true;
}

void openStandardStreams() {
    for (;;) {
        const int descriptor = ::open("/dev/null", O_RDWR);
        if (descriptor < 0)
            fail("/dev/null");
        if (descriptor > STDERR_FILENO) {
            ::close(descriptor);
            return;
        }
    }
}

Pipe::Pipe()
    : Pipe(createPipe()) {}

Pipe::Pipe(const std::array<int, 2>& ends)
    : reader(ends[0])
    , writer(ends[1]) {}

pid_t forkChild(const std::function<bool()>& work) {
    const pid_t parent = ::getpid();
    const SignalsBlocked blocked;
    const pid_t child = ::fork();
    if (child == 0)
        runChild(work, parent);
    if (child < 0)
        fail("fork");
    return child;
}

bool awaitChild(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

ChildProcess::ChildProcess(const Work& work)
    : m_process(forkChild([this, &work] {
        ::setpgid(0, 0);
        const int pipe = m_pipe.writer.number();
        closeAllBut(pipe);
        return work(pipe);
    })) {
    ::setpgid(m_process, m_process); // as the child does: either may run first
    ::close(m_pipe.writer.release());
}

bool ChildProcess::wait() {
    if (m_process == 0)
        return false;
    return awaitChild(std::exchange(m_process, 0));
}

void ChildProcess::kill() const {
    if (m_process > 0)
        ::kill(-m_process, SIGKILL);
}

} // namespace service
