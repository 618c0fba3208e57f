#include "system/ChildAnswer.hpp"

#include "util/Descriptor.hpp"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cerrno>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace cimom {
namespace {

using Done = std::function<void(std::optional<std::string>)>;

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

/** Blocks all signals for a scope. */
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        ::sigprocmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsBlocked() { ::sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t m_before;
};

/** Closes the child's copies of the parent's connections and locks: they end when the parent closes its own.
 */
void closeAllBut(int descriptor) {
    const auto number = static_cast<unsigned>(descriptor);
    if (number > 0)
        ::close_range(0, number - 1, 0);
    ::close_range(number + 1, ~0U, 0);
}

bool writeAll(int descriptor, const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t size = ::write(descriptor, bytes.data() + at, bytes.size() - at);
        if (size < 0)
            return false;
        at += static_cast<std::size_t>(size);
    }
    return true;
}

/** Runs in the child. Signals stay blocked: their handlers are those of the parent. */
[[noreturn]] void runChild(const Question& question, int pipe, pid_t parent) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) // it ended before prctl()
        ::_exit(1);
    closeAllBut(pipe);
    try {
        ::_exit(writeAll(pipe, question()) ? 0 : 1);
    } catch (const std::exception&) {
        ::_exit(1);
    }
}

/** A pipe whose ends are closed on exec. */
class Pipe {
public:
    Pipe()
        : Pipe(create()) {}

    util::Descriptor reader;
    util::Descriptor writer;

private:
    explicit Pipe(const std::array<int, 2>& ends)
        : reader(ends[0])
        , writer(ends[1]) {}
    static std::array<int, 2> create() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            fail("pipe");
        return ends;
    }
};

/** A child process that answers a question. It leads a process group, to which the processes that it starts
 * belong. */
class Child {
public:
    /** Throws std::system_error if no process or no descriptor is available. */
    explicit Child(const Question& question);
    ~Child() {
        kill();
        wait();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /** Gives the reading end of the pipe of the answer to the caller, who closes it. */
    int releasePipe() { return m_pipe.reader.release(); }
    /** Kills the process group; the pipe ends then. */
    void kill() const {
        if (m_process > 0)
            ::kill(-m_process, SIGKILL);
    }
    /** Waits for the end of the child. True if it has written its whole answer. */
    bool wait();

private:
    Pipe m_pipe;
    pid_t m_process; // 0: has ended
};

Child::Child(const Question& question) {
    const pid_t parent = ::getpid();
    const SignalsBlocked blocked;
    m_process = ::fork();
    if (m_process == 0)
        runChild(question, m_pipe.writer.number(), parent);
    if (m_process < 0)
        fail("fork");
    ::setpgid(m_process, m_process); // as the child does: either may run first
    ::close(m_pipe.writer.release());
}

bool Child::wait() {
    if (m_process == 0)
        return false;
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/** A child and the wait for its answer. The handlers that the io_context holds own it. */
class Running : public std::enable_shared_from_this<Running> {
public:
    Running(boost::asio::io_context& io, const Question& question)
        : m_child(question)
        , m_pipe(io)
        , m_timer(io) {
        m_pipe.assign(m_child.releasePipe());
    }

    void run(std::chrono::milliseconds limit, Done done) {
        m_timer.expires_after(limit);
        m_timer.async_wait([self = shared_from_this()](const boost::system::error_code& error) {
            if (!error)
                self->m_child.kill();
        });
        boost::asio::async_read(m_pipe, boost::asio::dynamic_buffer(m_answer),
                                [self = shared_from_this(),
                                 done = std::move(done)](const boost::system::error_code&, std::size_t) {
                                    self->m_timer.cancel();
                                    if (self->m_child.wait())
                                        done(std::move(self->m_answer));
                                    else
                                        done(std::nullopt);
                                });
    }

private:
    Child m_child;
    boost::asio::posix::stream_descriptor m_pipe;
    boost::asio::steady_timer m_timer;
    std::string m_answer;
};

} // namespace

void askChild(boost::asio::io_context& io, const Question& question, std::chrono::milliseconds limit,
              std::function<void(std::optional<std::string>)> done) {
    std::make_shared<Running>(io, question)->run(limit, std::move(done));
}

} // namespace cimom
