#include "objects/InstanceBuilder.hpp"
#include "providers/ProcessTable.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

using Table = QAV_UnixProcessAPI;

/** What each process is. */
class UnixProcess : public ProcessTable {
public:
    explicit UnixProcess(const Host& host)
        : ProcessTable({"QAV_UnixProcess",
                        {{"CreationClassName", CIMDataType::STRING, Role::key},
                         {"Name", CIMDataType::STRING},
                         {"Handle", CIMDataType::STRING, Role::key},
                         {"ModulePath", CIMDataType::STRING},
                         {"Parameters", CIMDataType::STRING, Role::state, true},
                         {"RunType", CIMDataType::UINT16},
                         {"ExecutionState", CIMDataType::UINT16}}},
                       Table::eProcessInformation, host) {}

protected:
    CIMInstance instance(const Table& process) const override {
        return InstanceBuilder(declaration())
            .set("CreationClassName", CIMValue(declaration().name))
            .set("Name", valueOf(process, &Table::getName))
            .set("Handle", valueOf(process, &Table::getHandle))
            .set("ModulePath", valueOf(process, &Table::getModulePath))
            .set("Parameters", valueOf(process, &Table::getParameters))
            .set("RunType", valueOf(process, &Table::getRunType))
            .set("ExecutionState", valueOf(process, &Table::getExecutionState))
            .build();
    }
};

} // namespace

std::unique_ptr<Provider> makeUnixProcess(const Host& host) {
    return std::make_unique<UnixProcess>(host);
}

} // namespace cimom
