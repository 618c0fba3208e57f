#ifndef SBLIM_SHELL_HPP
#define SBLIM_SHELL_HPP
#include "Descriptor.hpp"

#include <sys/types.h>

namespace sblim {

/** What a shell and its command get. One that is not open is /dev/null. */
struct Files {
    /** The command's standard input. */
    Descriptor in;
    /** Where the shell writes the exit status of the command, a line of digits, when that has ended. */
    Descriptor status;
    /** The command's standard output. */
    Descriptor out;
    /** The command's standard error. */
    Descriptor err;
};

/**
 * A shell around the shell of a command. It is our child and leads a process group of its own. It tells the
 * exit status of the command by a file, because the caller may have the status of any child thrown away
 * (SIGCHLD ignored), or collect it himself.
 */
class Shell {
public:
    /** Runs a command line with default signal dispositions, an empty mask and no descriptors but these. */
    bool start(const char* command, const Files& files);
    /** Kills it with its process group. */
    void kill() const;
    /**
     * Collects it, which must be about to end. Returns the signal that ended it, SIGKILL when it was
     * collected by somebody else, or 0.
     */
    int collect() const;

private:
    pid_t m_pid = -1;
};

} // namespace sblim
#endif
