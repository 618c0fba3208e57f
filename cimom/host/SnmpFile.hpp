#ifndef CIMOM_HOST_SNMP_FILE_HPP_INCLUDED
#define CIMOM_HOST_SNMP_FILE_HPP_INCLUDED
#include "host/Host.hpp"
#include "system/Text.hpp"

#include <map>
#include <optional>
#include <string>

namespace cimom {

/**
 * /proc/net/snmp, proc(5): for each protocol a line with the names of its columns and a line with their
 * values, both beginning with the protocol's name and a colon. Kernels differ in the columns, so they are
 * found by name.
 */
class SnmpFile {
public:
    explicit SnmpFile(const Host& host);

    /** A value; absent when the host does not tell it or T cannot hold it. */
    template <class T>
    std::optional<T> get(const std::string& protocol, const std::string& column) const {
        const auto found = m_values.find(protocol + ":" + column);
        return found == m_values.end() ? std::nullopt : number<T>(found->second);
    }

private:
    std::map<std::string, std::string> m_values; // by "protocol:column"
};

} // namespace cimom
#endif
