#ifndef CIMOM_PROVIDERS_PROCESS_TABLE_HPP_INCLUDED
#define CIMOM_PROVIDERS_PROCESS_TABLE_HPP_INCLUDED
#include "QAV_UnixProcessAPI.hpp"
#include "host/Host.hpp"
#include "objects/Provider.hpp"

#include <functional>
#include <string>

namespace cimom {

/** A class with an instance for each process of the host. */
class ProcessTable : public Provider {
public:
    ProcessTable(ClassDeclaration declaration, QAV_UnixProcessAPI::tProcessInfoType type, const Host& host);

    const ClassDeclaration& declaration() const override { return m_declaration; }
    InstanceSource instances() const override;

protected:
    using Process = QAV_UnixProcessAPI::tUnixProcess;
    using RunType = std::function<unsigned short(const OpenWBEM::String& name)>;

    /** What classifies programs by their names (RFC 2790, hrSWRunType). By default all are applications. */
    virtual RunType runType() const;

    virtual OpenWBEM::CIMInstance instance(const Process& process) const = 0;

private:
    const ClassDeclaration m_declaration;
    const QAV_UnixProcessAPI::tProcessInfoType m_type;
    const std::string m_folder; // of the processes
};

} // namespace cimom
#endif
