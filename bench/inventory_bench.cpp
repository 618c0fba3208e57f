// Reading the process table of a machine with many sleeping processes, beside what the kernel itself takes
// for the same files, and beside ps. Wall time: most of it is spent in the kernel.
#include "owb.h"

#include "Machine.hpp"
#include "QAV_UnixProcessAPI.hpp"
#include "support/AgentQueue.hpp"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

/** Processes that sleep as long as this lives. */
class Sleepers {
public:
    explicit Sleepers(std::size_t count) {
        while (m_pids.size() < count) {
            const pid_t pid = ::fork();
            if (pid < 0) {
                std::perror("inventory_bench: fork");
                break;
            }
            if (pid == 0) {
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
                for (;;)
                    ::pause();
            }
            m_pids.push_back(pid);
        }
    }
    ~Sleepers() {
        for (const pid_t pid : m_pids) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, nullptr, 0);
        }
    }
    Sleepers(const Sleepers&) = delete;
    Sleepers& operator=(const Sleepers&) = delete;

private:
    std::vector<pid_t> m_pids;
};

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

template <class Action>
double timeOf(Action action) {
    const double start = now();
    action();
    return now() - start;
}

/** Opens, reads and closes files of every process, and looks at nothing. Returns the number of processes. */
std::size_t readBare(const std::vector<std::string>& files, bool withLink) {
    std::size_t processes = 0;
    DIR* const folder = ::opendir("/proc");
    while (const dirent* const entry = ::readdir(folder)) {
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9')
            continue;
        ++processes;
        const std::string path = std::string("/proc/") + entry->d_name + "/";
        char buffer[4096];
        for (const std::string& name : files) {
            const int file = ::open((path + name).c_str(), O_RDONLY | O_CLOEXEC);
            if (file < 0 || ::read(file, buffer, sizeof buffer) < 0)
                continue;
            ::close(file);
        }
        if (withLink && ::readlink((path + "exe").c_str(), buffer, sizeof buffer) < 0)
            continue;
    }
    ::closedir(folder);
    return processes;
}

double inventoryTime(QAV_UnixProcessAPI::tProcessInfoType type) {
    QAV_UnixProcessAPI processes;
    return timeOf([&] { processes.init(type); });
}

double commandTime(const std::string& command) {
    return timeOf([&] {
        if (std::system((command + " >/dev/null").c_str()) != 0)
            std::fprintf(stderr, "inventory_bench: %s: failed\n", command.c_str());
    });
}

struct Pass {
    const char* name;
    QAV_UnixProcessAPI::tProcessInfoType type;
    std::vector<std::string> files;
    const char* ps;
};

void measure(const Pass& pass) {
    const bool withLink = pass.type == QAV_UnixProcessAPI::eProcessInformation;
    const std::size_t processes = readBare(pass.files, withLink);
    std::vector<double> inventories;
    std::vector<double> floors;
    std::vector<double> commands;
    for (int i = 0; i < 11; ++i) { // in turn, so that what else the machine does meets all alike
        floors.push_back(timeOf([&] { readBare(pass.files, withLink); }));
        inventories.push_back(inventoryTime(pass.type));
        commands.push_back(commandTime(pass.ps));
    }
    const double perProcess = 1e6 / static_cast<double>(processes);
    const double floor = bench::median(floors) * perProcess;
    const double inventory = bench::median(inventories) * perProcess;
    const double ps = bench::median(commands) * perProcess;
    std::printf("%9zu  %-11s  %9.2f  %9.2f  %6.2f  %9.2f  %6.2f\n", processes, pass.name, inventory, floor,
                inventory / floor, ps, inventory / ps);
}

/** What the queue of all items costs beside the inventory. */
void measureQueue() {
    support::AgentQueue queue;
    const double all = timeOf([&] { OWB_getSWRun(queue.head()); });
    const double passes = inventoryTime(QAV_UnixProcessAPI::eProcessInformation) +
                          inventoryTime(QAV_UnixProcessAPI::eStatisticalInformation);
    std::printf("OWB_getSWRun: %ld items, %.1f ms, of it the two passes %.1f ms\n", queue->size, all * 1e3,
                passes * 1e3);
}

} // namespace

int main() {
    const Pass information = {"information",
                              QAV_UnixProcessAPI::eProcessInformation,
                              {"stat", "cmdline", "status"},
                              "ps -eo pid,ppid,stat,euid,egid,comm,args"};
    const Pass statistics = {"statistics",
                             QAV_UnixProcessAPI::eStatisticalInformation,
                             {"stat", "status"},
                             "ps -eo pid,time,trs,drs,size"};
    bench::printMachine();
    std::printf("\nwall time, microseconds a process; bare: the same files opened, read and closed\n"
                "%9s  %-11s  %9s  %9s  %6s  %9s  %6s\n",
                "processes", "pass", "inventory", "bare", "ratio", "ps", "ratio");
    for (const std::size_t count : {1000U, 5000U}) {
        const Sleepers sleepers(count);
        measure(information);
        measure(statistics);
        measureQueue();
    }
    // Without processes to read, what is left is the program that is asked about the software.
    QAV_UnixProcessAPI processes;
    std::printf("asking /kq/bin/softinv: %.2f ms\n", timeOf([&] { processes.determineSWType("x"); }) * 1e3);
    return 0;
}
