// Reading the process table of a machine with many sleeping processes, beside what the kernel itself takes
// for the same files, and beside ps. Wall time: most of it is spent in the kernel.
#include "owb.h"

#include "Measure.hpp"
#include "QAV_UnixProcessAPI.hpp"
#include "support/AgentQueue.hpp"

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
            if (file < 0)
                continue;
            const bool isRead = ::read(file, buffer, sizeof buffer) >= 0;
            ::close(file);
            if (!isRead)
                break; // the process has ended
        }
        if (withLink && ::readlink((path + "exe").c_str(), buffer, sizeof buffer) < 0)
            continue;
    }
    ::closedir(folder);
    return processes;
}

double inventoryTime(QAV_UnixProcessAPI::tProcessInfoType type) {
    QAV_UnixProcessAPI processes;
    return bench::wallSecondsOf([&] { processes.init(type); });
}

double commandTime(const std::string& command) {
    return bench::wallSecondsOf([&] {
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

/** Prints a line, in microseconds a process, and the aims. */
void measure(const Pass& pass) {
    const bool withLink = pass.type == QAV_UnixProcessAPI::eProcessInformation;
    const std::size_t processes = readBare(pass.files, withLink);
    std::vector<double> inventories;
    std::vector<double> floors;
    std::vector<double> commands;
    for (int i = 0; i < 11; ++i) { // in turn, so that what else the machine does meets all alike
        floors.push_back(bench::wallSecondsOf([&] { readBare(pass.files, withLink); }));
        inventories.push_back(inventoryTime(pass.type));
        commands.push_back(commandTime(pass.ps));
    }
    const double perProcess = 1e6 / static_cast<double>(processes);
    const double floor = bench::median(floors) * perProcess;
    const double inventory = bench::median(inventories) * perProcess;
    const double ps = bench::median(commands) * perProcess;
    std::printf("| %zu | %s | %.2f | %.2f | %.2f | %.2f | %.2f |\n", processes, pass.name, inventory, floor,
                inventory / floor, ps, inventory / ps);
    const std::string what = pass.name + std::string(", ") + std::to_string(processes) + " processes";
    bench::printAim(what.c_str(), "times bare", 1.25, inventory / floor);
    bench::printAim(what.c_str(), "times ps", 1, inventory / ps);
}

/** Prints a line of what the queue of all items and the question for the software cost beside the passes. */
void measureQueue() {
    support::AgentQueue queue;
    const double all = bench::wallSecondsOf([&] { OWB_getSWRun(queue.head()); });
    const double passes = inventoryTime(QAV_UnixProcessAPI::eProcessInformation) +
                          inventoryTime(QAV_UnixProcessAPI::eStatisticalInformation);
    // Without processes to read, what is left is the program that is asked.
    QAV_UnixProcessAPI processes;
    const double question = bench::wallSecondsOf([&] { processes.determineSWType("x"); });
    std::printf("| %ld | %.1f | %.1f | %.1f %% | %.1f | %.1f %% |\n", queue->size, all * 1e3, passes * 1e3,
                100 * passes / all, question * 1e3, 100 * question / all);
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
    const std::vector<std::size_t> counts = {1000, 5000};
    bench::printMachine();
    std::printf("| processes | pass | inventory, µs | bare, µs | ratio | ps, µs | ratio |\n"
                "|---:|---|---:|---:|---:|---:|---:|\n");
    for (const std::size_t count : counts) {
        const Sleepers sleepers(count);
        measure(information);
        measure(statistics);
    }
    std::printf(
        "\n| items | OWB_getSWRun, ms | both passes, ms | share | asking for the software, ms | share |\n"
        "|---:|---:|---:|---:|---:|---:|\n");
    for (const std::size_t count : counts) {
        const Sleepers sleepers(count);
        measureQueue();
    }
    return 0;
}
