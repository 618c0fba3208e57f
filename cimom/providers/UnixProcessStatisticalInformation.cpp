#include "objects/InstanceBuilder.hpp"
#include "providers/ProcessTable.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** What each process uses; sizes in kB. */
class UnixProcessStatisticalInformation : public ProcessTable {
public:
    explicit UnixProcessStatisticalInformation(const Host& host)
        : ProcessTable({"QAV_UnixProcessStatisticalInformation",
                        {{"CreationClassName", CIMDataType::STRING, Role::key},
                         {"Handle", CIMDataType::STRING, Role::key},
                         {"RealStack", CIMDataType::UINT64},
                         {"RealData", CIMDataType::UINT64},
                         {"RealText", CIMDataType::UINT64},
                         {"TotalCPUTime", CIMDataType::DATETIME}}},
                       QAV_UnixProcessAPI::eStatisticalInformation, host) {}

protected:
    CIMInstance instance(const Process& process) const override {
        return InstanceBuilder(declaration())
            .set("CreationClassName", CIMValue(declaration().name))
            .set("Handle", CIMValue(process.handle))
            .set("RealStack", CIMValue(process.realStack))
            .set("RealData", CIMValue(process.realData))
            .set("RealText", CIMValue(process.realText))
            .set("TotalCPUTime", CIMValue(process.totalCpuTime))
            .build();
    }
};

} // namespace

std::unique_ptr<Provider> makeUnixProcessStatisticalInformation(const Host& host) {
    return std::make_unique<UnixProcessStatisticalInformation>(host);
}

} // namespace cimom
