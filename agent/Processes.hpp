#ifndef AGENT_PROCESSES_HPP
#define AGENT_PROCESSES_HPP

#include <cstdint>
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

    /** Whether the process is in both groups. */
    bool isComplete() const { return information && statistics; }

    /** Sum of the sizes, in kB; 0 if they are unknown. */
    std::uint64_t memory() const;
};

/** Orders of processes. */
enum class ProcessOrder {
    /** By name, without regard to case. */
    name,
    /** By ascending process ID. */
    handle,
    /** By ascending code of the state. */
    state,
    /** Most processor time first. */
    cpuTime,
    /** Largest Process::memory() first. */
    memory
};

/** Sorts processes. Those that the order does not distinguish are sorted by name, then by process ID. */
void sort(std::vector<Process>& processes, ProcessOrder order);

/**
 * Reads the processes with OWB_getSWRun(), in the order of group 16; those of group 22 alone follow. Needs no
 * object manager. Blocks while the software inventory runs, at most 30 s. For the thread that calls the
 * library.
 */
std::vector<Process> readProcesses();

} // namespace agent
#endif
