#ifndef CIMOM_PROVIDERS_STATISTICAL_DATA_HPP_INCLUDED
#define CIMOM_PROVIDERS_STATISTICAL_DATA_HPP_INCLUDED
#include "host/Host.hpp"
#include "objects/Provider.hpp"

#include <string>
#include <vector>

namespace cimom {

/** A counter of a protocol: the property, and the column of /proc/net/snmp that it comes from. */
struct Counter {
    const char* property;
    /** Null when Linux does not count this. */
    const char* column;
    OpenWBEM::CIMDataType::Type type = OpenWBEM::CIMDataType::UINT64;
};

/** A class of one instance that holds the counters of one protocol of /proc/net/snmp. */
class StatisticalData : public Provider {
public:
    /**
     * @param protocol as /proc/net/snmp calls it
     * @param instanceID identifies the instance
     * @param host must outlive the provider
     */
    StatisticalData(const char* className, std::string protocol, std::string instanceID,
                    std::vector<Counter> counters, const Host& host);

    const ClassDeclaration& declaration() const override { return m_declaration; }
    InstanceSource instances() const override;

private:
    ClassDeclaration m_declaration;
    std::string m_protocol;
    std::string m_instanceID;
    std::vector<Counter> m_counters;
    const Host& m_host;
};

} // namespace cimom
#endif
