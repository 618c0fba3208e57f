#include "formats/ProcessTable.hpp"

#include "agent/Catalogue.hpp"
#include "output/Text.hpp"

namespace owbctl {

using namespace agent;

namespace {

constexpr long informationGroup = 16;

/** Width of names except in wide tables. Only threads of the kernel have longer ones, which their command
 * repeats. */
constexpr std::size_t longestName = 16;

using Texts = std::vector<std::string>;

template <class Part>
Texts valueOf(const std::optional<Part>& part, std::string Part::*member) {
    return part ? Texts{(*part).*member} : Texts();
}

/** The name of a code of group 16; the code if it has none. */
std::string nameOf(const char* property, const std::string& code) {
    const char* const name = findAttribute(informationGroup, property)->values.find(code);
    return name == nullptr ? printable(code) : name;
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

// As in ps(1): the name in brackets if the path is unknown, as for a kernel thread.
std::string commandLine(const ProcessInformation& information) {
    std::string text = information.modulePath.empty() ? "[" + printable(information.name) + "]"
                                                      : printable(information.modulePath);
    for (const std::string& parameter : information.parameters)
        text += " " + printable(parameter);
    return text;
}

std::string nameCell(const Process& process) {
    return process.information ? printable(process.information->name) : Table::absent;
}

std::string stateCell(const Process& process) {
    return process.information ? nameOf("ExecutionState", process.information->executionState)
                               : Table::absent;
}

std::string kindCell(const Process& process) {
    return process.information ? nameOf("RunType", process.information->runType) : Table::absent;
}

std::string timeCell(const Process& process) {
    return process.statistics ? clock(process.statistics->cpuTime) : Table::absent;
}

std::string sizeCell(const Process& process, std::string ProcessStatistics::*size) {
    return process.statistics ? printable((*process.statistics).*size) : Table::absent;
}

std::string commandCell(const Process& process) {
    return process.information ? commandLine(*process.information) : Table::absent;
}

Texts cells(const Process& process) {
    return {cut(nameCell(process), longestName),
            printable(process.handle),
            stateCell(process),
            timeCell(process),
            process.statistics ? std::to_string(process.memory()) : Table::absent,
            commandCell(process)};
}

Texts wideCells(const Process& process) {
    return {nameCell(process),
            printable(process.handle),
            stateCell(process),
            kindCell(process),
            timeCell(process),
            sizeCell(process, &ProcessStatistics::text),
            sizeCell(process, &ProcessStatistics::data),
            sizeCell(process, &ProcessStatistics::stack),
            commandCell(process)};
}

} // namespace

std::vector<ProcessField> fieldsOf(const Process& process) {
    const auto& information = process.information;
    const auto& statistics = process.statistics;
    return {{"Name", valueOf(information, &ProcessInformation::name)},
            {"ModulePath", valueOf(information, &ProcessInformation::modulePath)},
            {"Parameters", information ? information->parameters : Texts()},
            {"RunType", valueOf(information, &ProcessInformation::runType)},
            {"ExecutionState", valueOf(information, &ProcessInformation::executionState)},
            {"TotalCPUTime", valueOf(statistics, &ProcessStatistics::cpuTime)},
            {"RealText", valueOf(statistics, &ProcessStatistics::text)},
            {"RealData", valueOf(statistics, &ProcessStatistics::data)},
            {"RealStack", valueOf(statistics, &ProcessStatistics::stack)}};
}

Table processTable(const std::vector<Process>& processes, bool isWide) {
    Table table(isWide ? Texts{"Name", "PID", "State", "Kind", "CPU time", "Text (kB)", "Data (kB)",
                               "Stack (kB)", "Command"}
                       : Texts{"Name", "PID", "State", "CPU time", "Memory (kB)", "Command"},
                isWide ? Table::Fit::wrapLast : Table::Fit::cut);
    for (const Process& process : processes)
        table.add(isWide ? wideCells(process) : cells(process));
    return table;
}

} // namespace owbctl
