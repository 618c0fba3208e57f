#include "providers/Providers.hpp"
#include "providers/StatisticalData.hpp"

namespace cimom {

std::unique_ptr<Provider> makeIPStatisticalData(const Host& host) {
    const std::vector<Counter> counters = {
        {"InReceives", "InReceives"},
        {"InHdrErrors", "InHdrErrors"},
        {"InAddrErrors", "InAddrErrors"},
        {"InForwDatagrams", "ForwDatagrams"},
        {"InUnknownProtos", "InUnknownProtos"},
        {"InDiscards", "InDiscards"},
        {"InDelivers", "InDelivers"},
        {"OutRequests", "OutRequests"},
        {"OutDiscards", "OutDiscards"},
        {"OutNoRoutes", "OutNoRoutes"},
        {"ReassemblyRequired", "ReasmReqds"},
        {"ReassemblyOKs", "ReasmOKs"},
        {"ReassemblyFails", "ReasmFails"},
        {"FragOKs", "FragOKs"},
        {"FragFails", "FragFails"},
        {"FragCreates", "FragCreates"},
        {"RoutingDiscards", nullptr},
    };
    return std::make_unique<StatisticalData>("QAV_IPStatisticalData", "Ip", "IP", counters, host);
}

} // namespace cimom
