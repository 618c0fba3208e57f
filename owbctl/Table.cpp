#include "Table.hpp"

#include "Text.hpp"

#include <algorithm>
#include <utility>

namespace owbctl {
namespace {

bool isNumber(const std::string& cell) {
    return !cell.empty() && cell.find_first_not_of("0123456789") == std::string::npos;
}

} // namespace

Table::Table(std::vector<std::string> header)
    : m_lines{std::move(header)} {}

void Table::add(std::vector<std::string> cells) {
    m_lines.push_back(std::move(cells));
}

std::string Table::text(std::size_t limit) const {
    std::vector<std::string> result(m_lines.size());
    std::size_t indent = 0;
    const std::size_t last = m_lines.front().size() - 1;
    for (std::size_t i = 0; i <= last; ++i) {
        const Column column = measure(i);
        for (std::size_t line = 0; line < m_lines.size(); ++line) {
            const std::string& cell = m_lines[line][i];
            const std::string blanks(column.width - width(cell), ' ');
            const std::string shown = i == last ? wrapped(cell, indent, limit) : cell;
            result[line] += column.numeric ? blanks + shown : shown + blanks;
            result[line] += "  ";
        }
        indent += column.width + 2;
    }
    std::string text;
    for (std::string& line : result)
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    return text;
}

Table::Column Table::measure(std::size_t column) const {
    std::size_t widest = width(m_lines.front()[column]);
    std::size_t numbers = 0;
    std::size_t others = 0;
    std::for_each(m_lines.begin() + 1, m_lines.end(), [&](const std::vector<std::string>& cells) {
        widest = std::max(widest, width(cells[column]));
        if (isNumber(cells[column]))
            ++numbers;
        else if (cells[column] != absent)
            ++others;
    });
    return {widest, numbers > 0 && others == 0};
}

} // namespace owbctl
