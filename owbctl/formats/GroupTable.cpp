#include "formats/GroupTable.hpp"

#include "formats/Reference.hpp"
#include "formats/Table.hpp"
#include "output/Text.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <utility>

namespace owbctl {

using namespace agent;

namespace {

constexpr std::size_t gap = 2;

/** A row, and the marks of its properties in their order; no marks at all for a row without. */
struct Line {
    const Row* row;
    std::vector<std::string> marks;

    std::string markOf(const Property& property) const {
        return marks.empty() ? std::string()
                             : marks[static_cast<std::size_t>(&property - row->properties.data())];
    }
};

using Lines = std::vector<Line>;
using Attributes = std::vector<const Attribute*>;

std::string padded(const std::string& text, std::size_t columns) {
    return text + std::string(columns - std::min(columns, width(text)), ' ');
}

// What identifies the row comes first.
std::vector<const Property*> inOrder(const Group& group, const Row& row) {
    std::vector<const Property*> properties;
    for (const Property& property : row.properties)
        properties.push_back(&property);
    if (!group.selected)
        std::stable_partition(properties.begin(), properties.end(),
                              [](const Property* property) { return property->attribute->isIdentifying; });
    return properties;
}

// One property on each line: name, value and mark, without a header.
std::string vertical(const Group& group, const Line& line, std::size_t limit, const Style& style) {
    const std::vector<const Property*> properties = inOrder(group, *line.row);
    std::size_t nameWidth = 0;
    std::size_t valueWidth = 0;
    for (const Property* property : properties) {
        nameWidth = std::max(nameWidth, width(heading(*property->attribute, style)));
        if (!line.markOf(*property).empty())
            valueWidth = std::max(valueWidth, width(valueText(*property, *line.row, style)));
    }
    std::string text;
    for (const Property* property : properties) {
        const std::string value = valueText(*property, *line.row, style);
        const std::string mark = line.markOf(*property);
        text += padded(heading(*property->attribute, style), nameWidth + gap);
        if (mark.empty())
            text += wrapped(value, nameWidth + gap, limit) + '\n';
        else
            text += padded(value, valueWidth + gap) + mark + '\n';
    }
    return text;
}

/** Whether a row has a value of an attribute, other than the empty text. */
bool isUsed(const Attribute* attribute, const Lines& lines) {
    return std::any_of(lines.begin(), lines.end(), [attribute](const Line& line) {
        const Property* const property = line.row->find(attribute);
        return property != nullptr && property->values != std::vector<std::string>{""};
    });
}

bool isConstant(const Attribute* attribute, const Lines& lines) {
    const Property* const first = lines.front().row->find(attribute);
    return std::all_of(lines.begin(), lines.end(), [attribute, first](const Line& line) {
        const Property* const property = line.row->find(attribute);
        return first != nullptr && property != nullptr && property->values == first->values;
    });
}

/** The attributes of the columns, in their order. */
struct Columns {
    Attributes beforeRow;
    Attributes afterRow;
};

Columns columnsOf(const Group& group, const Lines& lines, const Style& style) {
    if (group.selected)
        return {{}, *group.selected};
    Columns columns;
    Attributes others;
    for (const Attribute* attribute : attributesOf(group.number)) {
        if (!style.isWide && !isUsed(attribute, lines))
            continue;
        if (attribute->isIdentifying)
            columns.beforeRow.push_back(attribute);
        else if (attribute->kind == Kind::state)
            columns.afterRow.push_back(attribute);
        else if (attribute->kind != Kind::key || style.isWide || !isConstant(attribute, lines))
            others.push_back(attribute);
    }
    columns.afterRow.insert(columns.afterRow.end(), others.begin(), others.end());
    return columns;
}

/** The heading of a column and its cells, one for each line. */
struct Column {
    std::string heading;
    std::vector<std::string> cells;
    bool alignsRight;
    /** Whether a part of a value means nothing, as of a date. */
    bool isWhole;
};

/** The values of an attribute, one for each line. */
using Values = std::vector<std::optional<std::string>>;

Values valuesOf(const Attribute* attribute, const Lines& lines, const Style& style) {
    Values values;
    for (const Line& line : lines) {
        const Property* const property = line.row->find(attribute);
        values.push_back(property == nullptr ? std::nullopt
                                             : std::optional(valueText(*property, *line.row, style)));
    }
    return values;
}

/** Shortens the object paths of a column. Returns the name of the key that they then show; empty for none. */
std::string shorten(Values& values, const Attribute* attribute, const Lines& lines) {
    std::vector<std::string> paths;
    for (const Line& line : lines) {
        if (const Property* const property = line.row->find(attribute))
            paths.push_back(property->values.size() == 1 ? property->values.front() : std::string());
    }
    const std::optional<ShortReferences> references = shortened(paths);
    if (!references)
        return std::string();
    auto next = references->texts.begin();
    for (std::optional<std::string>& value : values) {
        if (value)
            value = printable(*next++);
    }
    return printable(references->key);
}

// Marks have the same width in all rows, so that the values are aligned.
std::vector<std::string> markedCells(const Values& values, const Attribute* attribute, const Lines& lines) {
    std::vector<std::string> marks;
    std::size_t markWidth = 0;
    for (const Line& line : lines) {
        const Property* const property = line.row->find(attribute);
        marks.push_back(property == nullptr ? std::string() : line.markOf(*property));
        markWidth = std::max(markWidth, width(marks.back()));
    }
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < values.size(); ++i) {
        cells.push_back(values[i].value_or(Table::absent));
        if (values[i] && markWidth > 0)
            cells.back() += " " + padded(marks[i], markWidth);
    }
    return cells;
}

Column columnOf(const Attribute* attribute, const Lines& lines, const Style& style) {
    std::string name = heading(*attribute, style);
    Values values = valuesOf(attribute, lines, style);
    if (attribute->kind == Kind::reference && !style.isRaw && !style.isWide) {
        const std::string key = shorten(values, attribute, lines);
        name += key.empty() ? "" : " (" + key + ")";
    }
    const bool isTime = attribute->kind == Kind::date || attribute->kind == Kind::interval;
    return {std::move(name), markedCells(values, attribute, lines), !unitOf(*attribute).empty(), isTime};
}

Column rowNumbers(const Lines& lines) {
    Column column{"Row", {}, true, true};
    for (const Line& line : lines)
        column.cells.push_back(std::to_string(line.row->number));
    return column;
}

std::size_t widthOf(const Column& column) {
    std::size_t widest = width(column.heading);
    for (const std::string& cell : column.cells)
        widest = std::max(widest, width(cell));
    return widest;
}

/** A table of columns of which the first `repeated` identify the row. */
Table tableOf(std::vector<Column> columns, std::size_t repeated, Table::Fit fit) {
    std::vector<std::string> header;
    for (const Column& column : columns)
        header.push_back(column.heading);
    Table table(std::move(header), fit);
    table.repeat(repeated);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].alignsRight)
            table.alignRight(i);
        if (columns[i].isWhole)
            table.keepWhole(i);
    }
    for (std::size_t row = 0; row < columns.front().cells.size(); ++row) {
        std::vector<std::string> cells;
        for (Column& column : columns)
            cells.push_back(std::move(column.cells[row]));
        table.add(std::move(cells));
    }
    return table;
}

std::string horizontal(const Group& group, const Lines& lines, std::size_t limit, const Style& style) {
    const Columns attributes = columnsOf(group, lines, style);
    std::vector<Column> columns;
    for (const Attribute* attribute : attributes.beforeRow)
        columns.push_back(columnOf(attribute, lines, style));
    columns.push_back(rowNumbers(lines));
    for (const Attribute* attribute : attributes.afterRow)
        columns.push_back(columnOf(attribute, lines, style));
    const bool isWhole = style.isWide || style.isRaw;
    std::size_t identifying = attributes.beforeRow.size();
    // An object path in full is too long to be repeated: the row number replaces it.
    if (identifying > 0 && isWhole && limit > 0 && widthOf(columns.front()) > limit / 2) {
        std::rotate(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(identifying),
                    columns.begin() + static_cast<std::ptrdiff_t>(identifying) + 1);
        identifying = 1;
    }
    return tableOf(std::move(columns), std::max<std::size_t>(identifying, 1),
                   isWhole ? Table::Fit::wrapAll : Table::Fit::cut)
        .text(limit);
}

/** A single line of several rows is a table, too: its row number and its columns are needed. */
std::string table(const Group& group, const Lines& lines, std::size_t limit, const Style& style) {
    if (lines.empty())
        return "no data\n";
    return lines.size() == 1 && group.rows.size() <= 1 ? vertical(group, lines.front(), limit, style)
                                                       : horizontal(group, lines, limit, style);
}

std::string rowsText(const std::vector<Row>& rows) {
    if (rows.size() != 1)
        return std::to_string(rows.size()) + " rows";
    return rows.front().number == 0 ? "1 row" : "row " + std::to_string(rows.front().number);
}

std::string itemsText(const std::vector<Row>& rows) {
    std::size_t count = 0;
    for (const Row& row : rows) {
        for (const Property& property : row.properties)
            count += property.values.size();
    }
    return std::to_string(count) + (count == 1 ? " item" : " items");
}

} // namespace

std::string extent(const Group& group) {
    return "(" + rowsText(group.rows) + ", " + itemsText(group.rows) +
           (group.status == OWB_DONE ? ")" : ", incomplete)");
}

std::string groupTable(const Group& group, std::size_t limit, const Style& style) {
    Lines lines;
    for (const Row& row : group.rows)
        lines.push_back({&row, {}});
    return table(group, lines, limit, style);
}

std::string sampleTable(const Sample& sample, std::size_t limit, const Style& style) {
    std::vector<Row> rows;
    std::vector<std::vector<std::string>> marks;
    for (const SampledRow& sampledRow : sample.rows) {
        rows.push_back({sampledRow.number, {}});
        marks.emplace_back();
        for (const SampledProperty& sampled : sampledRow.properties) {
            rows.back().properties.push_back(sampled.property);
            marks.back().push_back(mark(sampled));
        }
    }
    Lines lines;
    for (std::size_t i = 0; i < rows.size(); ++i)
        lines.push_back({&rows[i], std::move(marks[i])});
    return table(sample.group, lines, limit, style);
}

std::string vanishedText(const Row& row) {
    std::string text;
    for (const Property& property : row.properties) {
        if (property.attribute->isIdentifying)
            text += (text.empty() ? ": " : ", ") + std::string(property.attribute->property) + " " +
                    cell(property.values);
    }
    return "row " + std::to_string(row.number) + " vanished" + text;
}

std::string mark(const SampledProperty& sampled) {
    if (!sampled.isChanged)
        return std::string();
    if (!sampled.perSecond)
        return "*";
    char text[64];
    std::snprintf(text, sizeof text, *sampled.perSecond < 100 ? "+%.1f/s" : "+%.0f/s", *sampled.perSecond);
    return text;
}

} // namespace owbctl
