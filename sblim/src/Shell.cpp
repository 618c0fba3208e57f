#include "Shell.hpp"

#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>

namespace sblim {
namespace {

// Descriptors of the outer shell: 0 the command's input, 1 the status, 2 /dev/null, 3 and 4 the command's
// output. To its own standard error it would write that a signal has killed the command.
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

    /** Gives the child a descriptor under another number. Returns whether there was memory for it. */
    bool give(const Descriptor& descriptor, int number) {
        if (!descriptor.isOpen())
            return ::posix_spawn_file_actions_addopen(&m_actions, number, "/dev/null", O_RDWR, 0) == 0;
        return ::posix_spawn_file_actions_adddup2(&m_actions, descriptor.number(), number) == 0;
    }
    /** Keeps the others from the child, the caller's too. */
    bool closeOthers() {
        return ::posix_spawn_file_actions_addclosefrom_np(&m_actions, Descriptor::lowest) == 0;
    }
    /** Returns the process id, or -1. */
    pid_t run(const char* const words[]) const {
        pid_t pid;
        const int error = ::posix_spawn(&pid, words[0], &m_actions, &m_attributes,
                                        const_cast<char* const*>(words), environ);
        return error == 0 ? pid : -1;
    }

private:
    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
};

} // namespace

bool Shell::start(const char* command, const Files& files) {
    Spawning spawning;
    if (!spawning.give(files.in, 0) || !spawning.give(files.status, 1) || !spawning.give(Descriptor(), 2) ||
        !spawning.give(files.out, 3) || !spawning.give(files.err, 4) || !spawning.closeOthers())
        return false;
    const char* const words[] = {"/bin/sh", "-c", script, "sh", command, nullptr};
    m_pid = spawning.run(words);
    return m_pid > 0;
}

// When it was collected by somebody else, its number may be that of another group by now.
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
