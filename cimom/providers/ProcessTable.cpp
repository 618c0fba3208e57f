#include "providers/ProcessTable.hpp"

#include "Sources.hpp"

#include <memory>
#include <utility>

namespace cimom {

using namespace OpenWBEM;

ProcessTable::ProcessTable(ClassDeclaration declaration, QAV_UnixProcessAPI::tProcessInfoType type,
                           const Host& host)
    : m_declaration(std::move(declaration))
    , m_type(type)
    , m_folder(host.realPath("/proc"))
    , m_softwareInventory(host.realPath("/kq/bin/softinv")) {}

InstanceSource ProcessTable::instances() const {
    inventory::procFolder = m_folder.c_str();
    inventory::softwareInventory = m_softwareInventory.c_str();
    const auto processes = std::make_shared<QAV_UnixProcessAPI>();
    processes->init(m_type);
    processes->begin();
    return [this, processes] {
        if (!processes->hasNext())
            return CIMInstance(CIMNULL);
        processes->next();
        return instance(*processes);
    };
}

} // namespace cimom
