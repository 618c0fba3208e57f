#include "objects/InstanceBuilder.hpp"
#include "providers/ProcessTable.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

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
                       QAV_UnixProcessAPI::eProcessInformation, host) {}

protected:
    CIMInstance instance(const Process& process) const override {
        return InstanceBuilder(declaration())
            .set("CreationClassName", CIMValue(declaration().name))
            .set("Name", CIMValue(process.name))
            .set("Handle", CIMValue(process.handle))
            .set("ModulePath", CIMValue(process.modulePath))
            .set("Parameters", CIMValue(process.parameters))
            .set("RunType", CIMValue(process.runType))
            .set("ExecutionState", CIMValue(process.executionState))
            .build();
    }
};

} // namespace

std::unique_ptr<Provider> makeUnixProcess(const Host& host) {
    return std::make_unique<UnixProcess>(host);
}

} // namespace cimom
