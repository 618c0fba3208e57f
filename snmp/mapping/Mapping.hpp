#ifndef SNMP_MAPPING_MAPPING_HPP
#define SNMP_MAPPING_MAPPING_HPP

#include "snmp/mapping/Rules.hpp"
#include "snmp/tree/Table.hpp"

#include <optional>
#include <vector>

/** The rules and the catalogue together: how readings become tables. */
namespace snmp {

/** A column of a table, or an object that exists once. */
struct Column {
    /** Its last sub-identifier. */
    std::uint32_t number;
    ObjectRule rule;
    /** Where its values come from; none for a constant. */
    std::vector<const agent::Attribute*> sources;
};

/** A table of the mapping. */
struct TableMapping {
    const TableRule* rule;
    /** Object identifier of its entry. */
    Oid entry;
    /** By ascending number. */
    std::vector<Column> columns;
};

/** The tables, in the order of tableRules(). Made at the first call. */
const std::vector<TableMapping>& tableMappings();

/** The groups of a subject and their instances. */
using Readings = std::vector<Reading>;

/** The records of a table, in the order of the readings or of their ordinals. They refer to the readings. */
std::vector<Record> recordsOf(const TableRule& rule, const Readings& readings);

/** The index of a record; nothing if it has none, and is no row of the table. */
std::optional<Oid> indexOf(const TableRule& rule, const Record& record);

/** The value of a column; of the type Type::null if it is absent. */
Value valueOf(const Column& column, const Record& record, const Context& context);

/** A table with the rows that the readings of its subject have. Of two rows with one index the first stays.
 */
Table tableOf(const TableMapping& mapping, const Readings& readings, const Context& context);

/** The attribute to which a set of a column in a row of a group writes; null if it cannot be written. */
const agent::Attribute* writableAttribute(const Column& column, long group);

} // namespace snmp
#endif
