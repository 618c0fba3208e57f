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

/** Runs a program to its end, without standard input. The first word is its path. */
ProgramResult runProgram(const std::vector<std::string>& words);

/** A line of the object manager's log without the time that it begins with. */
std::string withoutTime(const std::string& line);

/** A program that runs until it is told to stop; killed when still running at the end. Its error output is
 * kept. */
class Daemon {
public:
    explicit Daemon(const std::vector<std::string>& words);
    ~Daemon();
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    /** Waits for the next line of its error output; "" when it has ended, another text when none comes for a
     * minute. Without the line end and the time, see withoutTime(). */
    std::string nextErrorLine();
    void signal(int number) const;
    /** Waits for its end; the exit code as in ProgramResult. */
    int wait();
    pid_t pid() const { return m_pid; }

private:
    pid_t m_pid;
    int m_errors;
    std::string m_unread;
};

} // namespace support
#endif
