#include "host/SoftwareTypes.hpp"
#include "objects/InstanceBuilder.hpp"
#include "providers/ProcessTable.hpp"
#include "providers/Providers.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

/** What each process is. */
class UnixProcess : public ProcessTable {
public:
    UnixProcess(const Host& host, boost::asio::io_context& io)
        : ProcessTable({"QAV_UnixProcess",
                        {{"CreationClassName", CIMDataType::STRING, Role::key},
                         {"Name", CIMDataType::STRING},
                         {"Handle", CIMDataType::STRING, Role::key},
                         {"ModulePath", CIMDataType::STRING},
                         {"Parameters", CIMDataType::STRING, Role::state, true},
                         {"RunType", CIMDataType::UINT16},
                         {"ExecutionState", CIMDataType::UINT16}}},
                       QAV_UnixProcessAPI::eProcessInformation, host)
        , m_types(host, io) {}

protected:
    RunType runType() const override {
        const std::shared_ptr<const SoftwareTypes> types = m_types.types();
        if (!types)
            return ProcessTable::runType();
        return [types](const String& name) { return types->of(name); };
    }

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

private:
    mutable SoftwareTypeSource m_types; // which keeps the answer of a program
};

} // namespace

std::unique_ptr<Provider> makeUnixProcess(const Host& host, boost::asio::io_context& io) {
    return std::make_unique<UnixProcess>(host, io);
}

} // namespace cimom
