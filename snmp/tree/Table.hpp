#ifndef SNMP_TREE_TABLE_HPP
#define SNMP_TREE_TABLE_HPP

#include "snmp/Value.hpp"

#include <cstddef>
#include <optional>
#include <vector>

namespace snmp {

/** A row: its index, and a value for each column. Absent values have the type Type::null. */
struct Row {
    Oid index;
    /** Group that the row was read from. */
    long group = 0;
    std::vector<Value> cells;

    bool has(std::size_t column) const { return cells[column].type != Type::null; }
};

/** The rows of a table by ascending index. Objects that exist once are a table with one row of index 0. */
class Table {
public:
    Table() = default;
    /** Sorts the rows. Of two rows with one index the first stays. */
    explicit Table(std::vector<Row> rows);

    const std::vector<Row>& rows() const { return m_rows; }
    /** The row with an index; null if there is none. */
    const Row* find(const Oid& index) const;
    /** The first row with a value in a column whose index is greater than `index`, or equal if `include`;
     * null if there is none. */
    const Row* next(const Oid& index, bool include, std::size_t column) const;

private:
    std::vector<Row> m_rows;
};

} // namespace snmp
#endif
