#include "providers/ProcessTable.hpp"

#include "Sources.hpp"

#include <utility>

namespace cimom {

using namespace OpenWBEM;

ProcessTable::ProcessTable(ClassDeclaration declaration, QAV_UnixProcessAPI::tProcessInfoType type,
                           const Host& host)
    : m_declaration(std::move(declaration))
    , m_type(type)
    , m_folder(host.realPath("/proc"))
    , m_softwareInventory(host.realPath("/kq/bin/softinv")) {}

std::vector<CIMInstance> ProcessTable::instances() const {
    inventory::procFolder = m_folder.c_str();
    inventory::softwareInventory = m_softwareInventory.c_str();
    QAV_UnixProcessAPI processes;
    processes.init(m_type);
    std::vector<CIMInstance> all;
    for (processes.begin(); processes.hasNext();) {
        processes.next();
        all.push_back(instance(processes));
    }
    return all;
}

} // namespace cimom
