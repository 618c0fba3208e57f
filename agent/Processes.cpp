#include "agent/Processes.hpp"

#include "agent/Queue.hpp"

#include "util/Ascii.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <map>
#include <tuple>

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

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), ascii::toLower);
    return text;
}

std::uint64_t number(const std::string& text) {
    return util::decimal<std::uint64_t>(text).value_or(0);
}

std::string nameOf(const Process& process) {
    return process.information ? lowerCase(process.information->name) : std::string();
}

std::string stateOf(const Process& process) {
    return process.information ? process.information->executionState : std::string();
}

// Intervals have a fixed width, so that their texts have the order of their lengths.
std::string cpuTimeOf(const Process& process) {
    return process.statistics ? process.statistics->cpuTime : std::string();
}

using Comparison = bool (*)(const Process& one, const Process& other);

bool precedesByName(const Process& one, const Process& other) {
    return std::forward_as_tuple(nameOf(one), number(one.handle)) <
           std::forward_as_tuple(nameOf(other), number(other.handle));
}

Comparison comparisonOf(ProcessOrder order) {
    switch (order) {
    case ProcessOrder::handle:
        return [](const Process& one, const Process& other) {
            return number(one.handle) < number(other.handle);
        };
    case ProcessOrder::state:
        return [](const Process& one, const Process& other) { return stateOf(one) < stateOf(other); };
    case ProcessOrder::cpuTime:
        return [](const Process& one, const Process& other) { return cpuTimeOf(one) > cpuTimeOf(other); };
    case ProcessOrder::memory:
        return [](const Process& one, const Process& other) { return one.memory() > other.memory(); };
    case ProcessOrder::name:
        break;
    }
    return precedesByName;
}

} // namespace

std::uint64_t Process::memory() const {
    return statistics ? number(statistics->text) + number(statistics->data) + number(statistics->stack) : 0;
}

void sort(std::vector<Process>& processes, ProcessOrder order) {
    std::sort(processes.begin(), processes.end(), precedesByName);
    std::stable_sort(processes.begin(), processes.end(), comparisonOf(order));
}

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
