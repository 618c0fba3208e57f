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
    /** How a last column that does not fit is shortened: cut like any other, or broken at blanks. */
    enum class LastColumn { cut, wrapped };

    explicit Table(std::vector<std::string> header, LastColumn lastColumn = LastColumn::cut);

    /** Adds one line of printable cells, as many as the header has. */
    void add(std::vector<std::string> cells);

    /**
     * The header and all lines, each ended by a line feed, without trailing blanks.
     *
     * Lines have at most `limit` columns of a terminal; 0 means no limit. Texts are cut and marked with "…",
     * numbers never. Columns that do not fit follow in further tables, which repeat the first column.
     */
    std::string text(std::size_t limit = 0) const;

    /** Cell of a value that does not exist. */
    static constexpr const char* absent = "-";

private:
    struct Column {
        std::size_t index;
        std::size_t width;
        bool numeric;
    };
    using Columns = std::vector<Column>;

    Column measure(std::size_t index) const;
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
