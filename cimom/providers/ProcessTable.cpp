#include "providers/ProcessTable.hpp"

#include "Processes.hpp"
#include "SoftwareType.hpp"

#include <memory>
#include <sblim_utilities.h>
#include <utility>
#include <vector>

namespace cimom {

using namespace OpenWBEM;

namespace {

using Lines = std::unique_ptr<char*, void (*)(char**)>;

/** One word of a shell's command line. */
std::string quoted(const std::string& text) {
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

/** What a program prints; null when it cannot be run. */
Lines outputOf(const std::string& program) {
    char** lines = nullptr;
    runcommand(quoted(program).c_str(), nullptr, &lines, nullptr);
    return {lines, freeresultbuf};
}

} // namespace

ProcessTable::ProcessTable(ClassDeclaration declaration, QAV_UnixProcessAPI::tProcessInfoType type,
                           const Host& host)
    : m_declaration(std::move(declaration))
    , m_type(type)
    , m_folder(host.realPath("/proc"))
    , m_softwareInventory(host.realPath("/kq/bin/softinv")) {}

InstanceSource ProcessTable::instances() const {
    const bool needsSoftware = m_type == QAV_UnixProcessAPI::eProcessInformation;
    const Lines software = needsSoftware ? outputOf(m_softwareInventory) : Lines(nullptr, freeresultbuf);
    const auto runType = [&software](const String& name) {
        return inventory::softwareType(software.get(), name);
    };
    Array<Process> processes;
    inventory::readProcesses({m_folder, runType}, m_type, processes);
    return eachOf(std::vector<Process>(processes.begin(), processes.end()),
                  [this](const Process& process) { return instance(process); });
}

} // namespace cimom
