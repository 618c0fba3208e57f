#include "snmp/tree/Tree.hpp"

#include <algorithm>
#include <utility>

namespace snmp {

Tree::Tree(std::vector<TreeColumn> columns)
    : m_columns(std::move(columns)) {
    std::sort(m_columns.begin(), m_columns.end(),
              [](const TreeColumn& left, const TreeColumn& right) { return left.oid < right.oid; });
}

const TreeColumn* Tree::find(const Oid& oid) const {
    const auto after =
        std::upper_bound(m_columns.begin(), m_columns.end(), oid,
                         [](const Oid& sought, const TreeColumn& column) { return sought < column.oid; });
    if (after == m_columns.begin() || !startsWith(oid, std::prev(after)->oid))
        return nullptr;
    return &*std::prev(after);
}

Value Tree::get(const Oid& oid, const Tables& tables) const {
    const TreeColumn* const column = find(oid);
    if (column == nullptr)
        return {Type::noSuchObject, {}};
    const Table* const table = tables(column->table);
    const Row* const row = table == nullptr ? nullptr : table->find(indexIn(oid, column->oid));
    return row != nullptr && row->has(column->cell) ? row->cells[column->cell]
                                                    : Value{Type::noSuchInstance, {}};
}

std::optional<Tree::Found> Tree::next(const SearchRange& range, const Tables& tables) const {
    const TreeColumn* const first = find(range.start);
    auto column = first != nullptr ? m_columns.begin() + (first - m_columns.data())
                                   : std::lower_bound(m_columns.begin(), m_columns.end(), range.start,
                                                      [](const TreeColumn& candidate, const Oid& sought) {
                                                          return candidate.oid < sought;
                                                      });
    for (; column != m_columns.end() && (range.end.empty() || column->oid < range.end); ++column) {
        const Table* const table = tables(column->table);
        if (table == nullptr)
            continue;
        const bool startsHere = &*column == first;
        const Row* const row =
            startsHere ? table->next(indexIn(range.start, column->oid), range.include, column->cell)
                       : table->next({}, true, column->cell);
        if (row == nullptr)
            continue;
        Oid oid = joined(column->oid, row->index);
        if (!range.end.empty() && oid >= range.end)
            return std::nullopt;
        return Found{{std::move(oid), row->cells[column->cell]}, column->table};
    }
    return std::nullopt;
}

Oid indexIn(const Oid& oid, const Oid& prefix) {
    return Oid(oid.begin() + static_cast<std::ptrdiff_t>(prefix.size()), oid.end());
}

} // namespace snmp
