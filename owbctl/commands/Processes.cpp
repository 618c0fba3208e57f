#include "commands/Processes.hpp"

#include <algorithm>
#include <map>

namespace owbctl {

using namespace agent;

ProcessOrder processOrderNamed(const std::string& name) {
    static const std::map<std::string, ProcessOrder> orders = {{"name", ProcessOrder::name},
                                                               {"pid", ProcessOrder::handle},
                                                               {"state", ProcessOrder::state},
                                                               {"cpu", ProcessOrder::cpuTime},
                                                               {"memory", ProcessOrder::memory}};
    return orders.at(name);
}

std::vector<Process> select(std::vector<Process> processes, const ProcessQuery& query) {
    const auto isIncomplete = [](const Process& process) { return !process.isComplete(); };
    if (!query.all)
        processes.erase(std::remove_if(processes.begin(), processes.end(), isIncomplete), processes.end());
    sort(processes, query.order);
    return processes;
}

void listProcesses(const ProcessQuery& query, Format& format) {
    format.writeProcesses(select(readProcesses(), query));
}

} // namespace owbctl
