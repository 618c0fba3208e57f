#include "providers/ProcessTable.hpp"

#include "Processes.hpp"
#include "SoftwareType.hpp"

#include <utility>
#include <vector>

namespace cimom {

using namespace OpenWBEM;

ProcessTable::ProcessTable(ClassDeclaration declaration, QAV_UnixProcessAPI::tProcessInfoType type,
                           const Host& host)
    : m_declaration(std::move(declaration))
    , m_type(type)
    , m_folder(host.realPath("/proc")) {}

InstanceSource ProcessTable::instances() const {
    Array<Process> processes;
    inventory::readProcesses({m_folder, runType()}, m_type, processes);
    return eachOf(std::vector<Process>(processes.begin(), processes.end()),
                  [this](const Process& process) { return instance(process); });
}

ProcessTable::RunType ProcessTable::runType() const {
    return [](const String& name) { return inventory::softwareType(nullptr, name); };
}

} // namespace cimom
