#include "objects/InstanceBuilder.hpp"
#include "providers/ProcessTable.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

using Table = QAV_UnixProcessAPI;

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
                       Table::eStatisticalInformation, host) {}

protected:
    CIMInstance instance(const Table& process) const override {
        return InstanceBuilder(declaration())
            .set("CreationClassName", CIMValue(declaration().name))
            .set("Handle", valueOf(process, &Table::getHandle))
            .set("RealStack", valueOf(process, &Table::getRealStack))
            .set("RealData", valueOf(process, &Table::getRealData))
            .set("RealText", valueOf(process, &Table::getRealText))
            .set("TotalCPUTime", valueOf(process, &Table::getTotalCpuTime))
            .build();
    }
};

} // namespace

std::unique_ptr<Provider> makeUnixProcessStatisticalInformation(const Host& host) {
    return std::make_unique<UnixProcessStatisticalInformation>(host);
}

} // namespace cimom
