#ifndef SBLIM_SHELL_HPP
#define SBLIM_SHELL_HPP
#include "Descriptor.hpp"

#include <sys/types.h>

namespace sblim {

/** The descriptors of a shell and its command. /dev/null replaces those that are not open. */
struct Files {
    /** Standard input of the command. */
    Descriptor in;
    /** The shell writes the exit status of the command here: a line of digits. */
    Descriptor status;
    /** Standard output of the command. */
    Descriptor out;
    /** Standard error of the command. */
    Descriptor err;
};

/**
 * An outer shell that runs the shell of a command. A child of this process and leader of a process group. It
 * writes the exit status of the command to a file, because the status of the child can get lost: the caller
 * may ignore SIGCHLD or collect all children.
 */
class Shell {
public:
    /** Starts a command line with default signal dispositions, an empty signal mask and only these
     * descriptors. Returns whether it runs. */
    bool start(const char* command, const Files& files);
    /** Kills the process group. */
    void kill() const;
    /**
     * Waits for the end of the shell. Returns the signal that ended it, SIGKILL if the caller has collected
     * it, else 0.
     */
    int collect() const;

private:
    pid_t m_pid = -1;
};

} // namespace sblim
#endif
