#include "system/AnsweringChild.hpp"

#include <cerrno>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace cimom {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/** Keeps signals waiting for a scope. */
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

/** A connection is closed and a lock free when the parent says so, whatever the child is at. */
void closeAllBut(int descriptor) {
    const auto number = static_cast<unsigned>(descriptor);
    if (number > 0)
        ::close_range(0, number - 1, 0);
    ::close_range(number + 1, ~0U, 0);
}

bool writeAll(int descriptor, const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t size = ::write(descriptor, bytes.data() + at, bytes.size() - at);
        if (size < 0)
            return false;
        at += static_cast<std::size_t>(size);
    }
    return true;
}

/** The child: its signals stay blocked, since their handlers would speak for the parent. */
[[noreturn]] void runChild(const Question& question, int pipe, pid_t parent) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(1);
    closeAllBut(pipe);
    try {
        ::_exit(writeAll(pipe, question()) ? 0 : 1);
    } catch (const std::exception&) {
        ::_exit(1);
    }
}

} // namespace

AnsweringChild::AnsweringChild(const Question& question) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        fail("pipe");
    const pid_t parent = ::getpid();
    const SignalsBlocked blocked;
    m_process = ::fork();
    if (m_process == 0)
        runChild(question, ends[1], parent);
    const int error = errno;
    ::close(ends[1]);
    m_answer = ends[0];
    if (m_process < 0) {
        ::close(m_answer);
        errno = error;
        fail("fork");
    }
    ::setpgid(m_process, m_process); // whoever comes first, the child or its parent
}

AnsweringChild::~AnsweringChild() {
    if (m_answer >= 0)
        ::close(m_answer);
    kill();
    wait();
}

void AnsweringChild::kill() const {
    if (m_process > 0)
        ::kill(-m_process, SIGKILL);
}

bool AnsweringChild::wait() {
    if (m_process == 0)
        return false;
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace cimom
