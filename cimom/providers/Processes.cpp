#include "Processes.hpp"

#include "SoftwareType.hpp"
#include "host/SoftwareInventory.hpp"
#include "providers/Subjects.hpp"
#include "schema/InstanceBuilder.hpp"

namespace cimom {

using namespace OpenWBEM;

namespace {

using inventory::Process;
/** Classifies a program by its name (RFC 2790, hrSWRunType). */
using RunType = std::function<unsigned short(const String& name)>;

unsigned short applicationByDefault(const String& name) {
    return inventory::softwareType(nullptr, name);
}

std::vector<Process> processes(const Host& host, QAV_UnixProcessAPI::tProcessInfoType type,
                               const RunType& runType) {
    Array<Process> all;
    inventory::readProcesses({host.realPath("/proc"), runType}, type, all);
    return std::vector<Process>(all.begin(), all.end());
}

const ClassDeclaration processClass{"QAV_UnixProcess",
                                    {{"CreationClassName", CIMDataType::STRING, Role::key},
                                     {"Name", CIMDataType::STRING},
                                     {"Handle", CIMDataType::STRING, Role::key},
                                     {"ModulePath", CIMDataType::STRING},
                                     {"Parameters", CIMDataType::STRING, Role::state, true},
                                     {"RunType", CIMDataType::UINT16},
                                     {"ExecutionState", CIMDataType::UINT16}}};

CIMInstance processInstance(const Process& process) {
    return InstanceBuilder(processClass)
        .set("CreationClassName", CIMValue(processClass.name))
        .set("Name", CIMValue(process.name))
        .set("Handle", CIMValue(process.handle))
        .set("ModulePath", CIMValue(process.modulePath))
        .set("Parameters", CIMValue(process.parameters))
        .set("RunType", CIMValue(process.runType))
        .set("ExecutionState", CIMValue(process.executionState))
        .build();
}

/** By the software inventory of the host; all programs are applications without one. Throws AnswerPending. */
RunType runType(SoftwareTypeSource& source) {
    const std::shared_ptr<const SoftwareTypes> types = source.types();
    if (!types)
        return applicationByDefault;
    return [types](const String& name) { return types->of(name); };
}

// Sizes in kB.
const ClassDeclaration statisticsClass{"QAV_UnixProcessStatisticalInformation",
                                       {{"CreationClassName", CIMDataType::STRING, Role::key},
                                        {"Handle", CIMDataType::STRING, Role::key},
                                        {"RealStack", CIMDataType::UINT64},
                                        {"RealData", CIMDataType::UINT64},
                                        {"RealText", CIMDataType::UINT64},
                                        {"TotalCPUTime", CIMDataType::DATETIME}}};

CIMInstance statisticsInstance(const Process& process) {
    return InstanceBuilder(statisticsClass)
        .set("CreationClassName", CIMValue(statisticsClass.name))
        .set("Handle", CIMValue(process.handle))
        .set("RealStack", CIMValue(process.realStack))
        .set("RealData", CIMValue(process.realData))
        .set("RealText", CIMValue(process.realText))
        .set("TotalCPUTime", CIMValue(process.totalCpuTime))
        .build();
}

} // namespace

std::vector<Provider> processStatisticsProviders(const Host& host) {
    const auto type = QAV_UnixProcessAPI::eStatisticalInformation;
    return {{&statisticsClass,
             [&host] { return eachOf(processes(host, type, applicationByDefault), statisticsInstance); }}};
}

std::vector<Provider> processProviders(const Host& host, boost::asio::io_context& io) {
    const auto type = QAV_UnixProcessAPI::eProcessInformation;
    const auto types = std::make_shared<SoftwareTypeSource>(host, io);
    return {{&processClass,
             [&host, types] { return eachOf(processes(host, type, runType(*types)), processInstance); }}};
}

} // namespace cimom
