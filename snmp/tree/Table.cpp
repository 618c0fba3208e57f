#include "snmp/tree/Table.hpp"

#include <algorithm>
#include <utility>

namespace snmp {
namespace {

bool precedes(const Row& row, const Oid& index) {
    return row.index < index;
}

} // namespace

Table::Table(std::vector<Row> rows)
    : m_rows(std::move(rows)) {
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [](const Row& left, const Row& right) { return left.index < right.index; });
    const auto end = std::unique(m_rows.begin(), m_rows.end(),
                                 [](const Row& left, const Row& right) { return left.index == right.index; });
    m_rows.erase(end, m_rows.end());
    m_rows.shrink_to_fit();
}

const Row* Table::find(const Oid& index) const {
    const auto row = std::lower_bound(m_rows.begin(), m_rows.end(), index, precedes);
    return row != m_rows.end() && row->index == index ? &*row : nullptr;
}

const Row* Table::next(const Oid& index, bool include, std::size_t column) const {
    auto row = std::lower_bound(m_rows.begin(), m_rows.end(), index, precedes);
    if (row != m_rows.end() && row->index == index && !include)
        ++row;
    row = std::find_if(row, m_rows.end(), [column](const Row& candidate) { return candidate.has(column); });
    return row == m_rows.end() ? nullptr : &*row;
}

} // namespace snmp
