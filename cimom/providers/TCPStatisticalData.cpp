#include "providers/Providers.hpp"
#include "providers/StatisticalData.hpp"

namespace cimom {

std::unique_ptr<Provider> makeTCPStatisticalData(const Host& host) {
    const std::vector<Counter> counters = {
        {"ActiveOpens", "ActiveOpens"},
        {"PassiveOpens", "PassiveOpens"},
        {"AttemptFails", "AttemptFails"},
        {"EstabResets", "EstabResets"},
        {"CurrEstab", "CurrEstab", OpenWBEM::CIMDataType::UINT32},
        {"InSegs", "InSegs"},
        {"OutSegs", "OutSegs"},
        {"RetransSegs", "RetransSegs"},
        {"InErrs", "InErrs"},
        {"OutRsts", "OutRsts"},
    };
    return std::make_unique<StatisticalData>("QAV_TCPStatisticalData", "Tcp", "TCP", counters, host);
}

} // namespace cimom
