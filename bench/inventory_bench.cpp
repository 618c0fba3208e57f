// Reads the process table of a machine with many sleeping processes, which are children of this program.
// Compares it with open, read and close of the same files, and with ps. Then compares OWB_getSWRun with its
// two passes over /proc. Measures wall time, most of which the kernel uses.
#include "owb.h"

#include "Measure.hpp"
#include "QAV_UnixProcessAPI.hpp"
#include "support/AgentQueue.hpp"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

/** Sleeping processes; the destructor kills them. */
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

/** Opens, reads and closes files of every process without parsing. Returns the number of processes. */
std::size_t readBare(const std::vector<std::string>& files, bool withLink) {
    std::size_t processes = 0;
    DIR* const directory = ::opendir("/proc");
    while (const dirent* const entry = ::readdir(directory)) {
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
    ::closedir(directory);
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

    bool withLink() const { return type == QAV_UnixProcessAPI::eProcessInformation; }
};

/** Seconds of the runs of each measurement. */
struct Times {
    std::vector<double> inventory;
    std::vector<double> bare;
    std::vector<double> ps;
};

/** Alternates the measurements, so that other load affects all of them equally. */
Times measure(const Pass& pass) {
    Times times;
    for (int i = 0; i < 11; ++i) {
        times.bare.push_back(bench::wallSecondsOf([&] { readBare(pass.files, pass.withLink()); }));
        times.inventory.push_back(inventoryTime(pass.type));
        times.ps.push_back(commandTime(pass.ps));
    }
    return times;
}

std::vector<double> sum(std::vector<double> a, const std::vector<double>& b) {
    std::transform(a.begin(), a.end(), b.begin(), a.begin(), std::plus<>());
    return a;
}

/** Prints a row, in microseconds a process. */
void printRow(const char* name, std::size_t processes, const Times& times) {
    const double perProcess = 1e6 / static_cast<double>(processes);
    const double inventory = bench::median(times.inventory) * perProcess;
    const double bare = bench::median(times.bare) * perProcess;
    const double ps = bench::median(times.ps) * perProcess;
    std::printf("| %zu | %s | %.2f | %.2f | %.2f | %.2f | %.2f |\n", processes, name, inventory, bare,
                inventory / bare, ps, inventory / ps);
}

/** Prints a row for each pass and one for both, and the aims of both. */
void measure(const Pass& first, const Pass& second) {
    const std::size_t processes = readBare(first.files, first.withLink());
    const Times a = measure(first);
    const Times b = measure(second);
    const Times both = {sum(a.inventory, b.inventory), sum(a.bare, b.bare), sum(a.ps, b.ps)};
    printRow(first.name, processes, a);
    printRow(second.name, processes, b);
    printRow("both", processes, both);
    const std::string what = "both passes, " + std::to_string(processes) + " processes";
    const double inventory = bench::median(both.inventory);
    bench::printAim(what.c_str(), "times bare", 1.35, inventory / bench::median(both.bare));
    bench::printAim(what.c_str(), "times ps", 0.9, inventory / bench::median(both.ps));
}

/** Prints a row: OWB_getSWRun, its two passes, and the software inventory. */
void measureQueue(std::size_t processes) {
    std::vector<double> alls;
    std::vector<double> passesAlone;
    long items = 0;
    for (int i = 0; i < 3; ++i) {
        support::AgentQueue queue;
        alls.push_back(bench::wallSecondsOf([&] { OWB_getSWRun(queue.head()); }));
        passesAlone.push_back(inventoryTime(QAV_UnixProcessAPI::eProcessInformation) +
                              inventoryTime(QAV_UnixProcessAPI::eStatisticalInformation));
        items = queue->size;
    }
    const double all = bench::median(alls);
    const double passes = bench::median(passesAlone);
    // Without processes, only the program of the software inventory remains.
    const double inventoryProgram = bench::medianOf(3, [] {
        QAV_UnixProcessAPI empty;
        return bench::wallSecondsOf([&] { empty.determineSWType("x"); });
    });
    std::printf("| %ld | %.1f | %.1f | %.1f %% | %.1f | %.1f %% |\n", items, all * 1e3, passes * 1e3,
                100 * passes / all, inventoryProgram * 1e3, 100 * inventoryProgram / all);
    const std::string what = "OWB_getSWRun, " + std::to_string(processes) + " processes";
    bench::printAim(what.c_str(), "times both passes", 1.3, all / passes);
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
        measure(information, statistics);
    }
    std::printf(
        "\n| items | OWB_getSWRun, ms | both passes, ms | share | asking for the software, ms | share |\n"
        "|---:|---:|---:|---:|---:|---:|\n");
    for (const std::size_t count : counts) {
        const Sleepers sleepers(count);
        measureQueue(count);
    }
    return 0;
}
