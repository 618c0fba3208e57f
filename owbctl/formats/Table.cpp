#include "formats/Table.hpp"

#include "output/Text.hpp"

#include <algorithm>
#include <utility>

namespace owbctl {
namespace {

constexpr std::size_t gap = 2;
/** Smallest width to which a text is cut to make a table fit. */
constexpr std::size_t leastTextWidth = 12;
/** Width of texts in a table that does not fit even so. */
constexpr std::size_t longestTextWidth = 30;

/** Whether a cell is a number, perhaps followed by a mark and blanks. */
bool isNumber(const std::string& cell) {
    const std::string number = cell.substr(0, cell.find(' '));
    return !number.empty() && number.find_first_not_of("0123456789") == std::string::npos &&
           cell.find_first_not_of("0123456789 *+./s") == std::string::npos;
}

template <class Columns>
std::size_t totalWidth(const Columns& columns) {
    std::size_t total = 0;
    for (const auto& column : columns)
        total += column.width + gap;
    return total == 0 ? 0 : total - gap;
}

void trimEnd(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
}

} // namespace

Table::Table(std::vector<std::string> header, LastColumn lastColumn)
    : m_lastColumn(lastColumn)
    , m_lines{std::move(header)} {}

void Table::add(std::vector<std::string> cells) {
    m_lines.push_back(std::move(cells));
}

std::string Table::text(std::size_t limit) const {
    Columns columns = measureAll();
    if (limit == 0 || totalWidth(columns) <= limit)
        return print(columns, 0);
    if (m_lastColumn == LastColumn::wrapped)
        return print(columns, limit);
    Columns narrowed = columns;
    narrow(narrowed, limit);
    if (totalWidth(narrowed) <= limit)
        return print(narrowed, 0);
    for (Column& column : columns)
        column.width = std::min(column.width, column.numeric ? column.width : longestTextWidth);
    std::string text;
    for (const Columns& part : split(columns, limit))
        text += (text.empty() ? "" : "\n") + print(part, 0);
    return text;
}

Table::Column Table::measure(std::size_t index) const {
    std::size_t widest = width(m_lines.front()[index]);
    std::size_t numbers = 0;
    std::size_t others = 0;
    std::for_each(m_lines.begin() + 1, m_lines.end(), [&](const std::vector<std::string>& cells) {
        widest = std::max(widest, width(cells[index]));
        if (isNumber(cells[index]))
            ++numbers;
        else if (cells[index] != absent)
            ++others;
    });
    return {index, widest, numbers > 0 && others == 0};
}

Table::Columns Table::measureAll() const {
    Columns columns;
    for (std::size_t index = 0; index < m_lines.front().size(); ++index)
        columns.push_back(measure(index));
    return columns;
}

std::size_t Table::leastWidth(const Column& column) const {
    const std::size_t least = std::max(leastTextWidth, width(m_lines.front()[column.index]));
    return column.numeric ? column.width : std::min(column.width, least);
}

// The widest text is cut first, so that narrower texts remain complete as long as possible.
void Table::narrow(Columns& columns, std::size_t limit) const {
    const auto spare = [this](const Column& column) { return column.width - leastWidth(column); };
    const auto isBetter = [&spare](const Column& one, const Column& other) {
        return spare(one) != 0 && spare(other) != 0 ? one.width < other.width : spare(one) < spare(other);
    };
    while (totalWidth(columns) > limit) {
        const auto widest = std::max_element(columns.begin(), columns.end(), isBetter);
        if (spare(*widest) == 0)
            return;
        --widest->width;
    }
}

std::vector<Table::Columns> Table::split(const Columns& columns, std::size_t limit) const {
    std::vector<Columns> parts{{columns.front()}};
    for (std::size_t index = 1; index < columns.size(); ++index) {
        Columns* part = &parts.back();
        if (part->size() > 1 && totalWidth(*part) + gap + columns[index].width > limit) {
            parts.push_back({columns.front()});
            part = &parts.back();
        }
        part->push_back(columns[index]);
    }
    return parts;
}

std::string Table::print(const Columns& columns, std::size_t wrapAt) const {
    std::string text;
    for (const std::vector<std::string>& cells : m_lines) {
        std::string line;
        std::size_t indent = 0;
        for (const Column& column : columns) {
            const bool isLast = &column == &columns.back();
            const std::string& whole = cells[column.index];
            const std::string cell =
                wrapAt > 0 && isLast ? wrapped(whole, indent, wrapAt) : cut(whole, column.width);
            const std::string blanks(column.width - std::min(column.width, width(cell)), ' ');
            line += column.numeric ? blanks + cell : cell + blanks;
            if (!isLast)
                line.append(gap, ' ');
            indent += column.width + gap;
        }
        trimEnd(line);
        text += line + '\n';
    }
    return text;
}

} // namespace owbctl
