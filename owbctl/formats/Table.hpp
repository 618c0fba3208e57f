#ifndef OWBCTL_FORMATS_TABLE_HPP
#define OWBCTL_FORMATS_TABLE_HPP

#include <cstddef>
#include <string>
#include <vector>

namespace owbctl {

/**
 * Lines of cells, printed in aligned columns. A column of numbers is aligned to the right; a column is one of
 * numbers when every cell below the header is made of decimal digits, maybe with a mark behind them as mark()
 * in GroupTable.hpp makes it, or is absent, and not all are absent.
 */
class Table {
public:
    /** What becomes of the last column when it does not fit: it is cut like any other, or broken at blanks.
     */
    enum class LastColumn { cut, wrapped };

    explicit Table(std::vector<std::string> header, LastColumn lastColumn = LastColumn::cut);

    /** Adds one line: printable cells, as many as the header has. */
    void add(std::vector<std::string> cells);

    /**
     * The header and all lines, each ended by a line feed, without blanks at the end of a line.
     *
     * When `limit` is not 0, lines take at most `limit` columns of a terminal: texts, never numbers, are cut
     * and marked by "…"; what still does not fit comes in further tables below, which repeat the first
     * column.
     */
    std::string text(std::size_t limit = 0) const;

    /** Stands for a value that is not there. */
    static constexpr const char* absent = "-";

private:
    struct Column {
        std::size_t place;
        std::size_t width;
        bool numeric;
    };
    using Columns = std::vector<Column>;

    Column measure(std::size_t place) const;
    Columns measureAll() const;
    std::size_t leastWidth(const Column& column) const;
    void narrow(Columns& columns, std::size_t limit) const;
    std::vector<Columns> split(const Columns& columns, std::size_t limit) const;
    std::string print(const Columns& columns, std::size_t wrapAt) const;

    LastColumn m_lastColumn;
    std::vector<std::vector<std::string>> m_lines;
};

} // namespace owbctl
#endif
