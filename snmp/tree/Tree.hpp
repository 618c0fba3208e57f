#ifndef SNMP_TREE_TREE_HPP
#define SNMP_TREE_TREE_HPP

#include "snmp/tree/Table.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace snmp {

/** A column of the tree: its object identifier, and where its values are. */
struct TreeColumn {
    Oid oid;
    std::size_t table;
    /** Index of the cells in a row. */
    std::size_t cell;
};

/** The columns of all tables by ascending object identifier. Has no values: the caller gives the tables. */
class Tree {
public:
    /** The rows of a table; null if they are unknown. */
    using Tables = std::function<const Table*(std::size_t table)>;

    struct Found {
        VarBind object;
        std::size_t table;
    };

    /** @param columns in any order; none contains another */
    explicit Tree(std::vector<TreeColumn> columns);

    const std::vector<TreeColumn>& columns() const { return m_columns; }
    /** The column that an object identifier is in; null if there is none. */
    const TreeColumn* find(const Oid& oid) const;
    /** noSuchObject if there is no such column, noSuchInstance if it has no such row or the row no value. */
    Value get(const Oid& oid, const Tables& tables) const;
    /** The first object in a range; nothing if there is none. Asks for the tables in order up to the one that
     * has it. */
    std::optional<Found> next(const SearchRange& range, const Tables& tables) const;

private:
    std::vector<TreeColumn> m_columns;
};

/** The sub-identifiers after a prefix. */
Oid indexIn(const Oid& oid, const Oid& prefix);

} // namespace snmp
#endif
