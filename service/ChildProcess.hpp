#ifndef SERVICE_CHILD_PROCESS_HPP_INCLUDED
#define SERVICE_CHILD_PROCESS_HPP_INCLUDED
#include "util/Descriptor.hpp"

#include <array>
#include <functional>
#include <string_view>
#include <sys/types.h>

namespace service {

/** Writes all bytes. False, with errno set, if a write fails. */
bool writeAll(int descriptor, std::string_view bytes);

/** Opens /dev/null as each standard stream that is closed, so that no other file takes its number. Throws
 * std::system_error. */
void openStandardStreams();

/**
 * Forks a child process that ends with this process, and carries out `work` in it with all signals blocked.
 * The child exits with status 0 if `work` returns true, and with 1 if it returns false or throws. Returns the
 * process ID. Throws std::system_error if no process is available.
 */
pid_t forkChild(const std::function<bool()>& work);

/** Waits for the end of a child. True if its exit status is 0. */
bool awaitChild(pid_t child);

/** A pipe whose ends are closed on exec. */
class Pipe {
public:
    /** Throws std::system_error. */
    Pipe();

    util::Descriptor reader;
    util::Descriptor writer;

private:
    explicit Pipe(const std::array<int, 2>& ends);
};

/**
 * A child process that writes to a pipe. It leads a process group, to which the processes that it starts
 * belong. In the child all other descriptors of the parent are closed, the standard streams among them, and
 * signals are blocked. It ends with this process, too.
 */
class ChildProcess {
public:
    /** What the child does with its end of the pipe. False and a std::exception mean that it has failed. */
    using Work = std::function<bool(int pipe)>;

    /** Throws std::system_error if no process or no descriptor is available. */
    explicit ChildProcess(const Work& work);
    ~ChildProcess() {
        kill();
        wait();
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /** Gives the reading end of the pipe to the caller, who closes it. */
    int releasePipe() { return m_pipe.reader.release(); }
    /** Kills the process group; the pipe ends then. */
    void kill() const;
    /** Waits for the end of the child. True if it has not failed. Blocks until the pipe ends. */
    bool wait();

private:
    Pipe m_pipe;
    pid_t m_process; // 0: has ended
};

} // namespace service
#endif
