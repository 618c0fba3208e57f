#ifndef TESTS_SUPPORT_PROGRAM_HPP
#define TESTS_SUPPORT_PROGRAM_HPP
#include <string>
#include <sys/types.h>
#include <vector>

namespace support {

struct ProgramResult {
    /** Exit status, or 128 + the signal that ended the program. */
    int exitCode;
    std::string out;
    std::string err;
};

/** Runs a program to its end, without standard input. The first element of the command is its path. */
ProgramResult runProgram(const std::vector<std::string>& command);

/** A line of the object manager's log without its leading time. */
std::string withoutTime(const std::string& line);

/** A program that runs until it receives a signal. The destructor kills it if it still runs. Its standard
 * error is a pipe. */
class Daemon {
public:
    explicit Daemon(const std::vector<std::string>& command);
    ~Daemon();
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    /** Waits for the next line on standard error. Returns it without line end and time (see withoutTime()),
     * "" at the end of the output, or "(no line within a minute)". */
    std::string nextErrorLine();
    void signal(int number) const;
    /** Waits for its end. Returns the exit code as in ProgramResult. */
    int wait();
    pid_t pid() const { return m_pid; }

private:
    pid_t m_pid;
    int m_errors;
    std::string m_unread;
};

/** Whether a text, such as the output of a program, contains another one. */
inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace support
#endif
