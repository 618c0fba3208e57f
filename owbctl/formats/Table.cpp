#include "formats/Table.hpp"

#include "output/Text.hpp"

#include <algorithm>
#include <utility>

namespace owbctl {
namespace {

constexpr std::size_t gap = 2;
/** Smallest width to which a text is cut to make a table fit. */
constexpr std::size_t leastTextWidth = 12;
/** Width up to which texts are complete in a table that does not fit even so. */
constexpr std::size_t longestTextWidth = 24;

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

/** Narrows the widest columns first, so that narrower ones remain complete as long as possible. */
template <class Columns>
void narrow(Columns& columns, std::size_t limit) {
    const auto isNarrower = [](const auto& one, const auto& other) {
        const bool canShrink = one.width > one.least;
        return canShrink == (other.width > other.least) ? one.width < other.width : !canShrink;
    };
    while (totalWidth(columns) > limit) {
        const auto widest = std::max_element(columns.begin(), columns.end(), isNarrower);
        if (widest->width == widest->least)
            return;
        --widest->width;
    }
}

void trimEnd(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
}

} // namespace

Table::Table(std::vector<std::string> header, Fit fit)
    : m_fit(fit)
    , m_alignsRight(header.size())
    , m_isWhole(header.size())
    , m_lines{std::move(header)} {}

void Table::add(std::vector<std::string> cells) {
    m_lines.push_back(std::move(cells));
}

void Table::alignRight(std::size_t column) {
    m_alignsRight[column] = true;
}

void Table::keepWhole(std::size_t column) {
    m_isWhole[column] = true;
}

std::string Table::text(std::size_t limit) const {
    Columns columns = measureAll();
    if (limit == 0 || totalWidth(columns) <= limit)
        return print(columns);
    // Rows whose names are cut may look alike.
    for (std::size_t i = 0; m_fit == Fit::cut && i < m_repeated; ++i)
        columns[i].least = std::max(columns[i].least, std::min(columns[i].width, limit / 3 / m_repeated));
    Columns narrowed = columns;
    narrow(narrowed, limit);
    if (totalWidth(narrowed) <= limit || m_fit == Fit::wrapLast)
        return print(narrowed);
    std::string text;
    for (const Columns& part : split(columns, limit))
        text += (text.empty() ? "" : "\n") + print(part);
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
    const bool isNumeric = (numbers > 0 && others == 0) || m_alignsRight[index];
    return {index, widest, leastWidth(index, widest, isNumeric), isNumeric};
}

Table::Columns Table::measureAll() const {
    Columns columns;
    for (std::size_t index = 0; index < m_lines.front().size(); ++index)
        columns.push_back(measure(index));
    return columns;
}

std::size_t Table::leastWidth(std::size_t index, std::size_t width, bool isNumeric) const {
    if (isNumeric || m_isWhole[index] || (m_fit == Fit::wrapLast && index + 1 < m_lines.front().size()))
        return width;
    if (m_fit == Fit::cut)
        return std::min(width, std::max(leastTextWidth, owbctl::width(m_lines.front()[index])));
    std::size_t longest = 0;
    for (const std::vector<std::string>& cells : m_lines)
        longest = std::max(longest, longestPiece(cells[index]));
    return longest;
}

Table::Columns Table::repeatedOf(const Columns& columns, std::size_t limit) const {
    Columns repeated{columns.front()};
    while (repeated.size() < m_repeated &&
           totalWidth(repeated) + gap + columns[repeated.size()].width <= limit / 2)
        repeated.push_back(columns[repeated.size()]);
    return repeated;
}

// Columns move to the next part until their texts have at least longestTextWidth, or are complete. Then texts
// take the space that is left.
std::vector<Table::Columns> Table::split(const Columns& columns, std::size_t limit) const {
    Columns capped = columns;
    for (Column& column : capped)
        column.width = std::max(column.least, std::min(column.width, longestTextWidth));
    const Columns repeated = repeatedOf(capped, limit);
    std::vector<Columns> parts{repeated};
    for (std::size_t index = repeated.size(); index < capped.size(); ++index) {
        if (parts.back().size() > repeated.size() &&
            totalWidth(parts.back()) + gap + capped[index].width > limit)
            parts.push_back(repeated);
        parts.back().push_back(capped[index]);
    }
    for (Columns& part : parts) {
        for (Column& column : part)
            column = columns[column.index];
        narrow(part, limit);
    }
    return parts;
}

std::string Table::print(const Columns& columns) const {
    std::string text;
    for (const std::vector<std::string>& cells : m_lines) {
        std::vector<std::vector<std::string>> lines;
        std::size_t height = 1;
        for (const Column& column : columns) {
            lines.push_back(linesOfCell(cells[column.index], column));
            height = std::max(height, lines.back().size());
        }
        for (std::size_t i = 0; i < height; ++i) {
            std::string line;
            for (std::size_t j = 0; j < columns.size(); ++j) {
                const std::string cell = i < lines[j].size() ? lines[j][i] : std::string();
                const std::string blanks(columns[j].width - std::min(columns[j].width, width(cell)), ' ');
                line += columns[j].alignsRight ? blanks + cell : cell + blanks;
                line.append(gap, ' ');
            }
            trimEnd(line);
            text += line + '\n';
        }
    }
    return text;
}

std::vector<std::string> Table::linesOfCell(const std::string& cell, const Column& column) const {
    if (width(cell) <= column.width)
        return {cell};
    return m_fit == Fit::cut ? std::vector{cut(cell, column.width)} : linesOf(cell, column.width);
}

} // namespace owbctl
