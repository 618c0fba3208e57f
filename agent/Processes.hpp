#ifndef AGENT_PROCESSES_HPP
#define AGENT_PROCESSES_HPP

#include <optional>
#include <string>
#include <vector>

namespace agent {

/** A row of group 16: item texts. */
struct ProcessInformation {
    std::string name;
    std::string modulePath;
    std::vector<std::string> parameters;
    std::string runType;
    std::string executionState;
};

/** A row of group 22: item texts, sizes in kB. */
struct ProcessStatistics {
    std::string cpuTime;
    std::string text;
    std::string data;
    std::string stack;
};

/** A process of this host. The groups are read one after the other, so a process that starts or ends in
 * between is in one of them only. */
struct Process {
    /** Process ID, decimal. */
    std::string handle;
    std::optional<ProcessInformation> information;
    std::optional<ProcessStatistics> statistics;
};

/**
 * Reads the processes with OWB_getSWRun(), in the order of group 16; those of group 22 alone follow. Needs no
 * object manager. Blocks while the software inventory runs, at most 30 s. For the thread that calls the
 * library.
 */
std::vector<Process> readProcesses();

} // namespace agent
#endif
