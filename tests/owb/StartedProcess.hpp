#ifndef TESTS_OWB_STARTED_PROCESS_HPP
#define TESTS_OWB_STARTED_PROCESS_HPP
#include "KernelView.hpp"

#include <csignal>
#include <functional>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/** A child of the test, ended with this at the latest. */
class StartedProcess {
public:
    /** @param body what it does; it ends behind it */
    explicit StartedProcess(const std::function<void()>& body)
        : m_pid(::fork()) {
        if (m_pid < 0)
            throw std::runtime_error("fork failed");
        if (m_pid > 0)
            return;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        body();
        ::_exit(0);
    }
    ~StartedProcess() {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
    StartedProcess(const StartedProcess&) = delete;
    StartedProcess& operator=(const StartedProcess&) = delete;

    pid_t pid() const { return m_pid; }
    std::string id() const { return std::to_string(m_pid); }

    /** Waits until it has a name and a state, and returns what the kernel tells then. */
    Record when(const std::string& name, char state) const {
        for (;;) {
            const KernelView view(m_pid);
            if (view.state() == state && view.record().name == name)
                return view.record();
            ::sched_yield();
        }
    }

    /** Body of a process with a name that sleeps. */
    static std::function<void()> sleeper(const char* name) {
        return [name] {
            ::prctl(PR_SET_NAME, name);
            for (;;)
                ::pause();
        };
    }
    /** Body of a process that becomes a program with arguments. */
    static std::function<void()> program(std::vector<std::string> words) {
        return [words] {
            std::vector<char*> arguments;
            for (const std::string& word : words)
                arguments.push_back(const_cast<char*>(word.c_str()));
            arguments.push_back(nullptr);
            ::execv("/bin/sleep", arguments.data());
        };
    }

private:
    const pid_t m_pid;
};

#endif
