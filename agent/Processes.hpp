#ifndef AGENT_PROCESSES_HPP
#define AGENT_PROCESSES_HPP

#include <optional>
#include <string>
#include <vector>

namespace owbctl {

/** What a process is, as group 16 tells it: item texts. */
struct ProcessInformation {
    std::string name;
    std::string modulePath;
    std::vector<std::string> parameters;
    std::string runType;
    std::string executionState;
};

/** What a process uses, as group 22 tells it: item texts, sizes in kB. */
struct ProcessStatistics {
    std::string cpuTime;
    std::string text;
    std::string data;
    std::string stack;
};

/** A process of this host. The two readings are made one after the other: a process may be in one of them
 * only. */
struct Process {
    std::string handle;
    std::optional<ProcessInformation> information;
    std::optional<ProcessStatistics> statistics;
};

/** The processes in the order in which they were read, those of the second reading alone at the end. */
std::vector<Process> readProcesses();

} // namespace owbctl
#endif
