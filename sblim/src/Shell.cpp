#include "Shell.hpp"

#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>

namespace sblim {
namespace {

// Descriptors of the outer shell: 0 input of the command, 1 status, 2 /dev/null, 3 and 4 output of the
// command. Descriptor 2 suppresses its message about a command killed by a signal.
constexpr char script[] = "(exec /bin/sh -c -- \"$1\") >&3 2>&4 3>&- 4>&-; echo $?";

/** Arguments of posix_spawn(3). */
class Spawning {
public:
    Spawning() {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawnattr_init(&m_attributes);
        sigset_t signals;
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&m_attributes, &signals);
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&m_attributes, &signals);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        ::posix_spawnattr_setflags(&m_attributes,
                                   POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    ~Spawning() {
        ::posix_spawn_file_actions_destroy(&m_actions);
        ::posix_spawnattr_destroy(&m_attributes);
    }
    Spawning(const Spawning&) = delete;
    Spawning& operator=(const Spawning&) = delete;

    /** Duplicates a descriptor to a number in the child; /dev/null if it is not open. False when out of
     * memory. */
    bool duplicate(const Descriptor& descriptor, int number) {
        if (!descriptor.isOpen())
            return ::posix_spawn_file_actions_addopen(&m_actions, number, "/dev/null", O_RDWR, 0) == 0;
        return ::posix_spawn_file_actions_adddup2(&m_actions, descriptor.number(), number) == 0;
    }
    /** Closes all other descriptors in the child. False when out of memory. */
    bool closeOthers() {
        return ::posix_spawn_file_actions_addclosefrom_np(&m_actions, Descriptor::lowest) == 0;
    }
    /** Returns the process ID, or -1. */
    pid_t run(const char* const arguments[]) const {
        pid_t pid;
        const int error = ::posix_spawn(&pid, arguments[0], &m_actions, &m_attributes,
                                        const_cast<char* const*>(arguments), environ);
        return error == 0 ? pid : -1;
    }

private:
    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
};

} // namespace

bool Shell::start(const char* command, const Files& files) {
    Spawning spawning;
    if (!spawning.duplicate(files.in, 0) || !spawning.duplicate(files.status, 1) ||
        !spawning.duplicate(Descriptor(), 2) || !spawning.duplicate(files.out, 3) ||
        !spawning.duplicate(files.err, 4) || !spawning.closeOthers())
        return false;
    const char* const arguments[] = {"/bin/sh", "-c", script, "sh", command, nullptr};
    m_pid = spawning.run(arguments);
    return m_pid > 0;
}

// The caller may have collected the child: then its number can belong to another process group.
void Shell::kill() const {
    siginfo_t info;
    if (::waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0)
        ::kill(-m_pid, SIGKILL);
}

int Shell::collect() const {
    int status = SIGKILL;
    while (::waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace sblim
