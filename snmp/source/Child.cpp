#include "snmp/source/Child.hpp"

#include "service/ChildProcess.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace snmp {
namespace {

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

} // namespace

Child::Child(const std::function<void(int)>& serve) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    m_socket.reset(ends[0]);
    const util::Descriptor other(ends[1]);
    m_pid = service::forkChild([&serve, &other] {
        const int kept = keepOnly(other.number());
        resetSignals();
        serve(kept);
        return true;
    });
}

Child::~Child() {
    ::kill(m_pid, SIGKILL);
    service::awaitChild(m_pid);
}

} // namespace snmp
