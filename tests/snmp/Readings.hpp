#ifndef TESTS_SNMP_READINGS_HPP
#define TESTS_SNMP_READINGS_HPP
#include "snmp/Loop.hpp"
#include "snmp/mapping/Mapping.hpp"

#include <string>
#include <utility>
#include <vector>

namespace snmp_test {

/** The items of an instance: nominators and texts. */
using Items = std::vector<std::pair<long, std::string>>;

/** A reading of a group, with the instances as rows 0, 1 and so on. */
inline snmp::Reading reading(long group, const std::vector<Items>& instances) {
    std::string bytes;
    for (std::size_t row = 0; row < instances.size(); ++row) {
        for (const auto& [nominator, text] : instances[row])
            snmp::appendItem(bytes, static_cast<long>(row), nominator, text);
    }
    return snmp::Reading(group, bytes);
}

template <class... Reading>
snmp::Readings readings(Reading... reading) {
    snmp::Readings all;
    (all.push_back(std::move(reading)), ...);
    return all;
}

/** The value of an object below mib-2, as shown() prints it; "absent" for none. The tables are those of the
 * subjects whose groups are read. */
inline std::string valueIn(const snmp::Readings& readings, const std::string& oid,
                           const snmp::Context& context = {}) {
    const snmp::Oid sought = below(oid.c_str());
    for (const snmp::TableMapping& mapping : snmp::tableMappings()) {
        const snmp::Table table = tableOf(mapping, readings, context);
        for (std::size_t cell = 0; cell < mapping.columns.size(); ++cell) {
            for (const snmp::Row& row : table.rows()) {
                const snmp::Oid column = snmp::joined(mapping.entry, {mapping.columns[cell].number});
                if (snmp::joined(column, row.index) == sought && row.has(cell))
                    return shown(row.cells[cell]);
            }
        }
    }
    return "absent";
}

/** The indexes of the rows of a table, separated by blanks. */
inline std::string indexesIn(const snmp::Readings& readings, const char* entry) {
    std::string all;
    for (const snmp::TableMapping& mapping : snmp::tableMappings()) {
        if (mapping.entry != below(entry))
            continue;
        const snmp::Table table = tableOf(mapping, readings, {});
        for (const snmp::Row& row : table.rows())
            all += (all.empty() ? "" : " ") + snmp::text(row.index);
    }
    return all;
}

} // namespace snmp_test
#endif
