#ifndef CIMOM_USERS_CHECKING_CHILD_HPP_INCLUDED
#define CIMOM_USERS_CHECKING_CHILD_HPP_INCLUDED
#include <functional>
#include <sys/types.h>

namespace cimom {

/** A child process that answers one question with yes or no. */
class CheckingChild {
public:
    /** Starts the child. Throws std::system_error when there is no process or no descriptor for it. */
    explicit CheckingChild(const std::function<bool()>& question);
    /** Kills the child unless wait() has seen its end. */
    ~CheckingChild();
    CheckingChild(const CheckingChild&) = delete;
    CheckingChild& operator=(const CheckingChild&) = delete;

    /** The end of a pipe from which `yes` or another byte comes, or none when the child failed. */
    int answer() const { return m_answer; }
    /** Leaves the pipe to the caller to close. */
    void releaseAnswer() { m_answer = -1; }
    /** Kills the child: the pipe ends. */
    void kill() const;
    /** Waits for the end of a child that has answered, or whose pipe has ended. */
    void wait();

    static constexpr char yes = 'y';

private:
    pid_t m_process; // 0: has ended
    int m_answer;    // negative: left to the caller
};

} // namespace cimom
#endif
