#include "providers/Providers.hpp"
#include "providers/StatisticalData.hpp"

namespace cimom {

std::unique_ptr<Provider> makeICMPStatisticalData(const Host& host) {
    std::vector<Counter> counters;
    for (const char* const name :
         {"InMsgs",          "InErrors",     "InDestUnreachs", "InTimeExcds",      "InParmProbs",
          "InSrcQuenchs",    "InRedirects",  "InEchos",        "InEchoReps",       "InTimestamps",
          "InTimestampReps", "InAddrMasks",  "InAddrMaskReps", "OutMsgs",          "OutErrors",
          "OutDestUnreachs", "OutTimeExcds", "OutParmProbs",   "OutSrcQuenchs",    "OutRedirects",
          "OutEchos",        "OutEchoReps",  "OutTimestamps",  "OutTimestampReps", "OutAddrMasks",
          "OutAddrMaskReps"})
        counters.push_back({name, name});
    return std::make_unique<StatisticalData>("QAV_ICMPStatisticalData", "Icmp", "ICMP", counters, host);
}

} // namespace cimom
