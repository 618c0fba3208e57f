#ifndef CIMOM_SYSTEM_ANSWERING_CHILD_HPP_INCLUDED
#define CIMOM_SYSTEM_ANSWERING_CHILD_HPP_INCLUDED
#include <functional>
#include <string>
#include <sys/types.h>

namespace cimom {

/**
 * What a child process works out: its answer is any bytes; it has none when this throws std::exception. In
 * the child all descriptors of the parent are closed, the standard streams among them, and signals are
 * blocked.
 */
using Question = std::function<std::string()>;

/** A child process that answers one question. It leads a process group, to which what it starts belongs. */
class AnsweringChild {
public:
    /** Starts the child. Throws std::system_error when there is no process or no descriptor for it. */
    explicit AnsweringChild(const Question& question);
    /** Kills the process group unless wait() has seen the end of the child. */
    ~AnsweringChild();
    AnsweringChild(const AnsweringChild&) = delete;
    AnsweringChild& operator=(const AnsweringChild&) = delete;

    /** The end of a pipe from which the answer comes. */
    int answer() const { return m_answer; }
    /** Leaves the pipe to the caller to close. */
    void releaseAnswer() { m_answer = -1; }
    /** Kills the process group: the pipe ends. */
    void kill() const;
    /** Waits for the end of a child whose pipe has ended. True when that was the end of a whole answer. */
    bool wait();

private:
    pid_t m_process; // 0: has ended
    int m_answer;    // negative: left to the caller
};

} // namespace cimom
#endif
