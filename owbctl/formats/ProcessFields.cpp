#include "formats/ProcessFields.hpp"

namespace owbctl {
namespace {

using Texts = std::vector<std::string>;

template <class Part>
Texts valueOf(const std::optional<Part>& part, std::string Part::*member) {
    return part ? Texts{(*part).*member} : Texts();
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

} // namespace owbctl
