#ifndef OWBCTL_TABLE_HPP
#define OWBCTL_TABLE_HPP

#include <cstddef>
#include <string>
#include <vector>

namespace owbctl {

/**
 * Lines of cells, printed in aligned columns. A column of numbers is aligned to the right; a column is one of
 * numbers when every cell below the header is made of decimal digits or is absent, and not all are absent.
 */
class Table {
public:
    explicit Table(std::vector<std::string> header);

    /** Adds one line: printable cells, as many as the header has. */
    void add(std::vector<std::string> cells);

    /**
     * The header and all lines, each ended by a line feed, without blanks at the end of a line. When `limit`
     * is not 0, cells of the last column are broken at blanks, so that lines take at most `limit` columns of
     * a terminal.
     */
    std::string text(std::size_t limit = 0) const;

    /** Stands for a value that is not there. */
    static constexpr const char* absent = "-";

private:
    struct Column {
        std::size_t width;
        bool numeric;
    };
    Column measure(std::size_t column) const;

    std::vector<std::vector<std::string>> m_lines;
};

} // namespace owbctl
#endif
