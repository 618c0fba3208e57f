#include "host/SnmpFile.hpp"

#include <algorithm>
#include <string_view>
#include <vector>

namespace cimom {

SnmpFile::SnmpFile(const Host& host) {
    const std::string content = host.readFile("/proc/net/snmp").value_or("");
    std::vector<std::string_view> columns;
    for (const std::string_view line : lines(content)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.empty() || columns.empty() || fields[0] != columns[0]) {
            columns = fields;
            continue;
        }
        for (std::size_t i = 1; i < std::min(columns.size(), fields.size()); ++i)
            m_values[std::string(columns[0]).append(columns[i])] = fields[i];
        columns.clear();
    }
}

} // namespace cimom
