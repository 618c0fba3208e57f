#include "formats/ProcessTable.hpp"

#include "output/Text.hpp"

#include <map>

namespace owbctl {
namespace {

std::string word(const std::map<std::string, const char*>& words, const std::string& code) {
    const auto found = words.find(code);
    return found == words.end() ? printable(code) : found->second;
}

// CIM_Process.ExecutionState
std::string stateWord(const std::string& code) {
    return word({{"0", "unknown"},
                 {"2", "ready"},
                 {"3", "running"},
                 {"4", "stopped"},
                 {"5", "waiting"},
                 {"7", "zombie"}},
                code);
}

// RFC 2790, hrSWRunType
std::string kindWord(const std::string& code) {
    return word({{"2", "system"}, {"3", "driver"}, {"4", "app"}}, code);
}

// ddddddddhhmmss.mmmmmm:000 as [d-]hh:mm:ss
std::string clock(const std::string& interval) {
    if (interval.size() < 14)
        return printable(interval);
    const std::size_t days = interval.find_first_not_of('0');
    const std::string time =
        interval.substr(8, 2) + ":" + interval.substr(10, 2) + ":" + interval.substr(12, 2);
    return days < 8 ? interval.substr(days, 8 - days) + "-" + time : time;
}

// As in ps(1): of a program whose path is not known, as of a thread of the kernel, the name in brackets.
std::string commandLine(const ProcessInformation& information) {
    std::string text = information.modulePath.empty() ? "[" + printable(information.name) + "]"
                                                      : printable(information.modulePath);
    for (const std::string& parameter : information.parameters)
        text += " " + printable(parameter);
    return text;
}

} // namespace

Table processTable(const std::vector<Process>& processes) {
    Table table({"Handle", "State", "Kind", "CPU time", "Text", "Data", "Stack", "Command"});
    const std::string absent = Table::absent;
    for (const Process& process : processes) {
        const auto& information = process.information;
        const auto& statistics = process.statistics;
        table.add({printable(process.handle), information ? stateWord(information->executionState) : absent,
                   information ? kindWord(information->runType) : absent,
                   statistics ? clock(statistics->cpuTime) : absent, statistics ? statistics->text : absent,
                   statistics ? statistics->data : absent, statistics ? statistics->stack : absent,
                   information ? commandLine(*information) : absent});
    }
    return table;
}

} // namespace owbctl
