#include "snmp/source/Child.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace snmp {
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

/** The handlers of the parent use what the child has closed. */
void resetSignals() {
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/** Makes the socket descriptor 3, and closes all but it and standard error. */
int keepOnly(int socket) {
    constexpr int kept = 3;
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(nothing, STDOUT_FILENO);
    if (socket != kept)
        ::dup2(socket, kept);
    ::close_range(kept + 1, ~0U, 0);
    ::fcntl(kept, F_SETFD, FD_CLOEXEC);
    return kept;
}

[[noreturn]] void run(const std::function<void(int)>& serve, int socket, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) // it ended before prctl()
        ::_exit(1);
    const int kept = keepOnly(socket);
    resetSignals();
    try {
        serve(kept);
        ::_exit(0);
    } catch (...) {
        ::_exit(1);
    }
}

} // namespace

Child::Child(const std::function<void(int)>& serve) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        fail("socketpair");
    m_socket.reset(ends[0]);
    const util::Descriptor other(ends[1]);
    const pid_t parent = ::getpid();
    const SignalsBlocked blocked;
    m_pid = ::fork();
    if (m_pid == 0)
        run(serve, other.number(), parent);
    if (m_pid < 0)
        fail("fork");
}

Child::~Child() {
    ::kill(m_pid, SIGKILL);
    while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace snmp
