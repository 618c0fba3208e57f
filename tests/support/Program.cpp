#include "support/Program.hpp"

#include "support/Pattern.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace support {
namespace {

#ifdef SUPPORT_ENDS_PROGRAMS_GENTLY
const int endSignal = SIGTERM;
#else
const int endSignal = SIGKILL;
#endif

struct Pipe {
    int ends[2];
    Pipe() {
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("pipe failed");
    }
};

pid_t start(const std::vector<std::string>& command, int out, int err) {
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const pid_t pid = ::fork();
    if (pid < 0)
        throw std::runtime_error("fork failed");
    if (pid == 0) {
        const int in = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::dup2(in, 0);
        if (out >= 0)
            ::dup2(out, 1);
        ::dup2(err, 2);
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    return pid;
}

int exitCodeOf(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int waitFor(pid_t pid) {
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return exitCodeOf(status);
}

// Reads both pipes to their ends, in the order in which data arrives.
void readBoth(int outPipe, int errPipe, ProgramResult& result) {
    pollfd waiting[] = {{outPipe, POLLIN, 0}, {errPipe, POLLIN, 0}};
    std::string* const texts[] = {&result.out, &result.err};
    int open = 2;
    while (open > 0) {
        if (::poll(waiting, 2, -1) < 0)
            continue;
        for (int i = 0; i < 2; ++i) {
            if (waiting[i].fd < 0 || waiting[i].revents == 0)
                continue;
            char buffer[4096];
            const ssize_t n = ::read(waiting[i].fd, buffer, sizeof buffer);
            if (n > 0) {
                texts[i]->append(buffer, static_cast<std::size_t>(n));
            } else {
                waiting[i].fd = -1;
                --open;
            }
        }
    }
}

} // namespace

ProgramResult runProgram(const std::vector<std::string>& command) {
    Pipe out;
    Pipe err;
    ProgramResult result{};
    const pid_t pid = start(command, out.ends[1], err.ends[1]);
    ::close(out.ends[1]);
    ::close(err.ends[1]);
    readBoth(out.ends[0], err.ends[0], result);
    ::close(out.ends[0]);
    ::close(err.ends[0]);
    result.exitCode = waitFor(pid);
    return result;
}

std::string withoutTime(const std::string& line) {
    return replacedAll(line, R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[+-]\d\d:\d\d )", "");
}

Daemon::Daemon(const std::vector<std::string>& command) {
    Pipe err;
    m_pid = start(command, -1, err.ends[1]);
    ::close(err.ends[1]);
    m_errors = err.ends[0];
}

Daemon::~Daemon() {
    if (m_pid > 0) {
        ::kill(m_pid, endSignal);
        waitFor(m_pid);
    }
    ::close(m_errors);
}

std::string Daemon::nextErrorLine() {
    for (;;) {
        const std::size_t end = m_unread.find('\n');
        if (end != std::string::npos) {
            const std::string line = m_unread.substr(0, end);
            m_unread.erase(0, end + 1);
            return withoutTime(line);
        }
        const int longest = 60 * 1000;
        pollfd errors{m_errors, POLLIN, 0};
        if (::poll(&errors, 1, longest) == 0)
            return "(no line within a minute)";
        char buffer[4096];
        const ssize_t n = ::read(m_errors, buffer, sizeof buffer);
        if (n <= 0)
            return std::string();
        m_unread.append(buffer, static_cast<std::size_t>(n));
    }
}

void Daemon::signal(int number) const {
    ::kill(m_pid, number);
}

int Daemon::wait() {
    const int code = waitFor(m_pid);
    m_pid = -1;
    return code;
}

} // namespace support
