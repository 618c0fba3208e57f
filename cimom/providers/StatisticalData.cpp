#include "providers/StatisticalData.hpp"

#include "host/SnmpFile.hpp"
#include "objects/InstanceBuilder.hpp"

#include <utility>

namespace cimom {

using namespace OpenWBEM;

StatisticalData::StatisticalData(const char* className, std::string protocol, std::string instanceID,
                                 std::vector<Counter> counters, const Host& host)
    : m_declaration{className, {{"InstanceID", CIMDataType::STRING, Role::key}}}
    , m_protocol(std::move(protocol))
    , m_instanceID(std::move(instanceID))
    , m_counters(std::move(counters))
    , m_host(host) {
    for (const Counter& counter : m_counters)
        m_declaration.properties.push_back({counter.property, counter.type});
}

InstanceSource StatisticalData::instances() const {
    const SnmpFile file(m_host);
    InstanceBuilder instance(m_declaration);
    instance.set("InstanceID", CIMValue(m_instanceID.c_str()));
    for (const Counter& counter : m_counters) {
        if (!counter.column)
            continue;
        if (counter.type == CIMDataType::UINT32)
            instance.set(counter.property, file.get<UInt32>(m_protocol, counter.column));
        else
            instance.set(counter.property, file.get<UInt64>(m_protocol, counter.column));
    }
    return only(instance.build());
}

} // namespace cimom
