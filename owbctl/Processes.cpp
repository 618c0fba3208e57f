#include "Processes.hpp"

#include "Queue.hpp"

#include <map>

namespace owbctl {
namespace {

// Items of one row, by nominator.
using Values = std::map<long, std::vector<std::string>>;

constexpr long informationGroup = 16;
constexpr long statisticsGroup = 22;
constexpr long informationHandle = 2;
constexpr long statisticsHandle = 12;

std::string text(const Values& values, long nominator) {
    const auto found = values.find(nominator);
    return found == values.end() ? std::string() : found->second.front();
}

ProcessInformation information(const Values& values) {
    const auto parameters = values.find(4);
    return {text(values, 1), text(values, 3),
            parameters == values.end() ? std::vector<std::string>() : parameters->second, text(values, 5),
            text(values, 6)};
}

ProcessStatistics statistics(const Values& values) {
    return {text(values, 7), text(values, 9), text(values, 10), text(values, 11)};
}

std::map<long, Values> rowsOfGroup(const Queue& queue, long group) {
    std::map<long, Values> rows;
    for (const _qItem* item = queue.begin(); item != queue.end(); item = item->next) {
        if (item->group == group)
            rows[item->row][item->nom].emplace_back(item->val);
    }
    return rows;
}

} // namespace

std::vector<Process> readProcesses() {
    Queue queue;
    OWB_getSWRun(queue.head());
    std::vector<Process> processes;
    std::map<std::string, std::size_t> places;
    for (const auto& [row, values] : rowsOfGroup(queue, informationGroup)) {
        const std::string handle = text(values, informationHandle);
        places[handle] = processes.size();
        processes.push_back({handle, information(values), std::nullopt});
    }
    for (const auto& [row, values] : rowsOfGroup(queue, statisticsGroup)) {
        const std::string handle = text(values, statisticsHandle);
        const auto place = places.find(handle);
        if (place != places.end())
            processes[place->second].statistics = statistics(values);
        else
            processes.push_back({handle, std::nullopt, statistics(values)});
    }
    return processes;
}

} // namespace owbctl
