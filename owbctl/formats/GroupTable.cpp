#include "formats/GroupTable.hpp"

#include "formats/Table.hpp"
#include "output/Text.hpp"

#include <algorithm>
#include <cstdio>

namespace owbctl {

using namespace agent;

namespace {

constexpr std::size_t gap = 2;

/** A value for people, and its mark. */
struct Shown {
    const Attribute* attribute;
    std::string value;
    std::string mark;
};

struct ShownRow {
    long number;
    std::vector<Shown> properties;

    const Shown* find(const Attribute* attribute) const {
        const auto found =
            std::find_if(properties.begin(), properties.end(),
                         [attribute](const Shown& shown) { return shown.attribute == attribute; });
        return found == properties.end() ? nullptr : &*found;
    }
};

std::string padded(const std::string& text, std::size_t columns) {
    return text + std::string(columns - std::min(columns, width(text)), ' ');
}

// One property on each line: name, value and mark, without a header.
std::string vertical(const ShownRow& row, std::size_t limit) {
    std::size_t nameWidth = 0;
    std::size_t valueWidth = 0;
    for (const Shown& shown : row.properties) {
        nameWidth = std::max(nameWidth, width(shown.attribute->property));
        if (!shown.mark.empty())
            valueWidth = std::max(valueWidth, width(shown.value));
    }
    std::string text;
    for (const Shown& shown : row.properties) {
        text += padded(shown.attribute->property, nameWidth + gap);
        if (shown.mark.empty())
            text += wrapped(shown.value, nameWidth + gap, limit) + '\n';
        else
            text += padded(shown.value, valueWidth + gap) + shown.mark + '\n';
    }
    return text;
}

std::vector<const Attribute*> usedColumns(long group, const std::vector<ShownRow>& rows) {
    std::vector<const Attribute*> columns = attributesOf(group);
    const auto isUnused = [&rows](const Attribute* column) {
        return std::none_of(rows.begin(), rows.end(),
                            [column](const ShownRow& row) { return row.find(column) != nullptr; });
    };
    columns.erase(std::remove_if(columns.begin(), columns.end(), isUnused), columns.end());
    return columns;
}

std::size_t markWidth(const Attribute* column, const std::vector<ShownRow>& rows) {
    std::size_t widest = 0;
    for (const ShownRow& row : rows) {
        const Shown* const shown = row.find(column);
        widest = std::max(widest, shown == nullptr ? 0 : width(shown->mark));
    }
    return widest;
}

// Marks have the same width in all rows, so that the values are aligned.
std::string cell(const Shown* shown, std::size_t markWidth) {
    if (shown == nullptr)
        return Table::absent;
    return markWidth == 0 ? shown->value : shown->value + " " + padded(shown->mark, markWidth);
}

std::string horizontal(long group, const std::vector<ShownRow>& rows, std::size_t limit) {
    const std::vector<const Attribute*> columns = usedColumns(group, rows);
    std::vector<std::string> header = {"Row"};
    std::vector<std::size_t> markWidths;
    for (const Attribute* column : columns) {
        header.emplace_back(column->property);
        markWidths.push_back(markWidth(column, rows));
    }
    Table table(std::move(header));
    for (const ShownRow& row : rows) {
        std::vector<std::string> cells = {std::to_string(row.number)};
        for (std::size_t i = 0; i < columns.size(); ++i)
            cells.push_back(cell(row.find(columns[i]), markWidths[i]));
        table.add(std::move(cells));
    }
    return table.text(limit);
}

std::string table(long group, const std::vector<ShownRow>& rows, std::size_t limit) {
    if (rows.empty())
        return "no data\n";
    return rows.size() == 1 ? vertical(rows.front(), limit) : horizontal(group, rows, limit);
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

std::string cell(const std::vector<std::string>& values) {
    if (values.empty())
        return Table::absent;
    std::string text;
    for (const std::string& value : values)
        text += (&value == &values.front() ? "" : ", ") + printable(value);
    return text;
}

std::string extent(const Group& group) {
    return "(" + rowsText(group.rows) + ", " + itemsText(group.rows) +
           (group.status == OWB_DONE ? ")" : ", incomplete)");
}

std::string groupTable(const Group& group, std::size_t limit) {
    std::vector<ShownRow> rows;
    for (const Row& row : group.rows) {
        rows.push_back({row.number, {}});
        for (const Property& property : row.properties)
            rows.back().properties.push_back({property.attribute, cell(property.values), {}});
    }
    return table(group.number, rows, limit);
}

std::string sampleTable(const Sample& sample, std::size_t limit) {
    std::vector<ShownRow> rows;
    for (const SampledRow& row : sample.rows) {
        rows.push_back({row.number, {}});
        for (const SampledProperty& sampled : row.properties)
            rows.back().properties.push_back(
                {sampled.property.attribute, cell(sampled.property.values), mark(sampled)});
    }
    return table(sample.group.number, rows, limit);
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
