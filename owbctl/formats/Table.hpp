#ifndef OWBCTL_FORMATS_TABLE_HPP
#define OWBCTL_FORMATS_TABLE_HPP

#include <cstddef>
#include <string>
#include <vector>

namespace owbctl {

/**
 * Lines of cells, printed in aligned columns. A column of numbers is aligned to the right. In such a column
 * every cell below the header consists of decimal digits, perhaps followed by a mark (see mark() in
 * GroupTable.hpp), or is absent; at least one is not absent.
 */
class Table {
public:
    /** What happens to texts in a table that is too wide. */
    enum class Fit {
        /** They are cut and marked with "…", the widest first. */
        cut,
        /** They are broken into lines at blanks and after commas, the widest first. */
        wrapAll,
        /** Those of the last column are broken into lines, others are not changed. */
        wrapLast
    };

    explicit Table(std::vector<std::string> header, Fit fit = Fit::cut);

    /** Adds one line of printable cells, as many as the header has. */
    void add(std::vector<std::string> cells);

    /** Sets how many of the first columns identify a line, 1 by default. They are repeated where the table
     * continues below, as far as they take at most half of the width. They are not cut if they take at most a
     * third. */
    void repeat(std::size_t columns) { m_repeated = columns; }

    /** Aligns a column to the right, whatever its cells are. */
    void alignRight(std::size_t column);

    /** Neither cuts nor breaks the texts of a column. */
    void keepWhole(std::size_t column);

    /**
     * The header and all lines, each ended by a line feed, without trailing blanks.
     *
     * Lines have at most `limit` columns of a terminal; 0 means no limit. Numbers are never cut. Columns that
     * do not fit follow in further tables, except with Fit::wrapLast. A line is longer than the limit only if
     * a number, a word or a heading is too long.
     */
    std::string text(std::size_t limit = 0) const;

    /** Cell of a value that does not exist. */
    static constexpr const char* absent = "-";

private:
    struct Column {
        std::size_t index;
        std::size_t width;
        /** The width below which the column is not narrowed. */
        std::size_t least;
        bool alignsRight;
    };
    using Columns = std::vector<Column>;

    Column measure(std::size_t index) const;
    Columns measureAll() const;
    std::size_t leastWidth(std::size_t index, std::size_t width, bool isNumeric) const;
    Columns repeatedOf(const Columns& columns, std::size_t limit) const;
    std::vector<Columns> split(const Columns& columns, std::size_t limit) const;
    std::string print(const Columns& columns) const;
    std::vector<std::string> linesOfCell(const std::string& cell, const Column& column) const;

    Fit m_fit;
    std::size_t m_repeated = 1;
    std::vector<bool> m_alignsRight;
    std::vector<bool> m_isWhole;
    std::vector<std::vector<std::string>> m_lines;
};

} // namespace owbctl
#endif
