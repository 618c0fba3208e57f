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

/** A child of the test; the destructor kills it. */
class StartedProcess {
public:
    /** Starts a child that runs the body and exits. */
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

    /** Waits until the process has a name and a state; returns its record at that time. */
    Record when(const std::string& name, char state) const {
        for (;;) {
            const KernelView view(m_pid);
            if (view.state() == state && view.record().name == name)
                return view.record();
            ::sched_yield();
        }
    }

    /** Body of a process that sets its name and sleeps. */
    static std::function<void()> sleeper(const char* name) {
        return [name] {
            ::prctl(PR_SET_NAME, name);
            for (;;)
                ::pause();
        };
    }
    /** Body of a process that executes sleep(1) with argv. */
    static std::function<void()> program(std::vector<std::string> arguments) {
        return [arguments] {
            std::vector<char*> argv;
            for (const std::string& argument : arguments)
                argv.push_back(const_cast<char*>(argument.c_str()));
            argv.push_back(nullptr);
            ::execv("/bin/sleep", argv.data());
        };
    }

private:
    const pid_t m_pid;
};

#endif
