#ifndef OWBCTL_COMMANDS_PROCESSES_HPP
#define OWBCTL_COMMANDS_PROCESSES_HPP

#include "formats/Format.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** Which processes to list, and how. */
struct ProcessQuery {
    agent::ProcessOrder order;
    /** Whether to include processes that are in one of the two groups only. */
    bool all;
};

/** The order with a name of processOrderNames. */
agent::ProcessOrder processOrderNamed(const std::string& name);

/** The processes that a query selects, in its order. */
std::vector<agent::Process> select(std::vector<agent::Process> processes, const ProcessQuery& query);

/** The command processes: reads the processes of this host and writes them in the given format. */
void listProcesses(const ProcessQuery& query, Format& format);

} // namespace owbctl
#endif
