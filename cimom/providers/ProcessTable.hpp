#ifndef CIMOM_PROVIDERS_PROCESS_TABLE_HPP_INCLUDED
#define CIMOM_PROVIDERS_PROCESS_TABLE_HPP_INCLUDED
#include "QAV_UnixProcessAPI.hpp"
#include "host/Host.hpp"
#include "objects/Provider.hpp"

#include <string>

namespace cimom {

/** A class with an instance for each process of the host. */
class ProcessTable : public Provider {
public:
    ProcessTable(ClassDeclaration declaration, QAV_UnixProcessAPI::tProcessInfoType type, const Host& host);

    const ClassDeclaration& declaration() const override { return m_declaration; }
    InstanceSource instances() const override;

protected:
    /** Instance of the process at the cursor. */
    virtual OpenWBEM::CIMInstance instance(const QAV_UnixProcessAPI& process) const = 0;

private:
    const ClassDeclaration m_declaration;
    const QAV_UnixProcessAPI::tProcessInfoType m_type;
    const std::string m_folder; // of the processes
    const std::string m_softwareInventory;
};

/** What a getter of the process table copies, as a CIM value. */
template <class Value>
OpenWBEM::CIMValue valueOf(const QAV_UnixProcessAPI& process, int (QAV_UnixProcessAPI::*get)(Value&) const) {
    Value value{};
    (process.*get)(value);
    return OpenWBEM::CIMValue(value);
}

} // namespace cimom
#endif
