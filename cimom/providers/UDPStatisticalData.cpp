#include "providers/Providers.hpp"
#include "providers/StatisticalData.hpp"

namespace cimom {

std::unique_ptr<Provider> makeUDPStatisticalData(const Host& host) {
    const std::vector<Counter> counters = {
        {"InDatagrams", "InDatagrams"},
        {"NoPorts", "NoPorts"},
        {"InErrors", "InErrors"},
        {"OutDatagrams", "OutDatagrams"},
    };
    return std::make_unique<StatisticalData>("QAV_UDPStatisticalData", "Udp", "UDP", counters, host);
}

} // namespace cimom
