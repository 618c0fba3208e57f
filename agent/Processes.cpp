#include "agent/Processes.hpp"

#include "agent/Queue.hpp"

#include <map>

namespace agent {
namespace {

constexpr long informationGroup = 16;
constexpr long statisticsGroup = 22;
constexpr long informationHandle = 2;
constexpr long statisticsHandle = 12;

std::string text(const ValuesByNominator& values, long nominator) {
    const auto found = values.find(nominator);
    return found == values.end() ? std::string() : found->second.front();
}

ProcessInformation information(const ValuesByNominator& values) {
    const auto parameters = values.find(4);
    return {text(values, 1), text(values, 3),
            parameters == values.end() ? std::vector<std::string>() : parameters->second, text(values, 5),
            text(values, 6)};
}

ProcessStatistics statistics(const ValuesByNominator& values) {
    return {text(values, 7), text(values, 9), text(values, 10), text(values, 11)};
}

} // namespace

std::vector<Process> readProcesses() {
    Queue queue;
    OWB_getSWRun(queue.head());
    std::vector<Process> processes;
    std::map<std::string, std::size_t> indexes;
    for (const auto& [row, values] : valuesByRow(queue, informationGroup)) {
        const std::string handle = text(values, informationHandle);
        indexes[handle] = processes.size();
        processes.push_back({handle, information(values), std::nullopt});
    }
    for (const auto& [row, values] : valuesByRow(queue, statisticsGroup)) {
        const std::string handle = text(values, statisticsHandle);
        const auto index = indexes.find(handle);
        if (index != indexes.end())
            processes[index->second].statistics = statistics(values);
        else
            processes.push_back({handle, std::nullopt, statistics(values)});
    }
    return processes;
}

} // namespace agent
