// Reads of one client while another client waits for the program of the software inventory, which sleeps.
#include "OW_CIMClient.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include "Measure.hpp"
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/TempDir.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

const int sleepSeconds = 20;
const double maximumMilliseconds = 50; // for a read of another client

/** A real object manager that serves a fake host with one process. */
class Manager {
public:
    Manager()
        : m_daemon({OWBCIMOMD, "--socket", m_directory.file("s"), "--no-state", "--root", hostRoot()}) {
        const std::string line = m_daemon.nextErrorLine();
        if (line.find("ready") == std::string::npos) {
            std::fprintf(stderr, "bench: %s\n", line.c_str());
            std::exit(EXIT_FAILURE);
        }
    }
    std::string url() const { return support::urlOf(m_directory.file("s")); }
    bool hasProgramStarted() const { return std::filesystem::exists(m_directory.file("started")); }

private:
    std::string hostRoot() const {
        m_directory.write("host/proc/7/stat", "7 (daemon) S 1 7 7 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 1 1 1\n");
        m_directory.write("host/proc/7/cmdline", "daemon");
        m_directory.write("host/proc/7/status", "Uid:\t0\t0\t0\t0\nGid:\t0\t0\t0\t0\n");
        const std::string program =
            m_directory.write("host/kq/bin/softinv", "#!/bin/sh\n: >'" + m_directory.file("started") +
                                                         "'\nsleep " + std::to_string(sleepSeconds) + "\n");
        ::chmod(program.c_str(), 0700);
        return m_directory.file("host");
    }

    support::TempDir m_directory;
    support::Daemon m_daemon;
};

std::size_t read(OpenWBEM::CIMClient& client, const char* className) {
    OpenWBEM::CIMInstanceEnumeration all = client.enumInstancesE(className);
    std::size_t count = 0;
    for (; all.hasMoreElements(); all.nextElement())
        ++count;
    return count;
}

/** Starts a process that reads the processes and waits for the program. */
pid_t startWaiting(const Manager& manager) {
    const pid_t process = ::fork();
    if (process == 0) {
        OpenWBEM::CIMClient client(manager.url().c_str(), "root/cimv2");
        ::_exit(read(client, "QAV_UnixProcess") == 1 ? 0 : 1);
    }
    while (!manager.hasProgramStarted())
        ::usleep(1000);
    return process;
}

/** The times in milliseconds of all reads until the process ends. */
std::vector<double> readsDuring(const Manager& manager, pid_t process) {
    OpenWBEM::CIMClient client(manager.url().c_str(), "root/cimv2");
    std::vector<double> times;
    int status = 0;
    while (::waitpid(process, &status, WNOHANG) == 0) {
        times.push_back(1000 * bench::wallSecondsOf([&client] { read(client, "QAV_OperatingSystem"); }));
        ::usleep(1000);
    }
    if (status != 0)
        std::abort();
    return times;
}

} // namespace

int main() {
    bench::printMachine();
    const Manager manager;
    std::vector<double> times;
    const double seconds = bench::wallSecondsOf([&] { times = readsDuring(manager, startWaiting(manager)); });
    std::sort(times.begin(), times.end());
    std::printf(
        "| the other client waits, s | reads meanwhile | median, ms | longest, ms |\n|---:|---:|---:|---:|\n"
        "| %.1f | %zu | %.2f | %.2f |\n",
        seconds, times.size(), times[times.size() / 2], times.back());
    bench::printAim("a read while a program sleeps", "ms", maximumMilliseconds, times.back());
    return seconds >= sleepSeconds && times.back() < maximumMilliseconds ? EXIT_SUCCESS : EXIT_FAILURE;
}
