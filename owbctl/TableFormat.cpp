#include "TableFormat.hpp"

#include "Catalogue.hpp"
#include "ProcessTable.hpp"
#include "Table.hpp"
#include "Text.hpp"

#include <algorithm>

namespace owbctl {
namespace {

std::string rowsText(const std::vector<Row>& rows) {
    if (rows.size() != 1)
        return std::to_string(rows.size()) + " rows";
    return rows.front().number == 0 ? "1 row" : "row " + std::to_string(rows.front().number);
}

/** Items of the queue that the rows were made of. */
std::size_t itemCount(const std::vector<Row>& rows) {
    std::size_t count = 0;
    for (const Row& row : rows) {
        for (const Property& property : row.properties)
            count += property.values.size();
    }
    return count;
}

std::string itemsText(const std::vector<Row>& rows) {
    const std::size_t count = itemCount(rows);
    return std::to_string(count) + (count == 1 ? " item" : " items");
}

std::string heading(const Group& group) {
    return "Group " + std::to_string(group.number) + "  " + group.className + "  (" + rowsText(group.rows) +
           ", " + itemsText(group.rows) + (group.status == OWB_DONE ? "" : ", incomplete") + ")\n";
}

std::string cell(const std::vector<std::string>& values) {
    if (values.empty())
        return Table::absent;
    std::string text;
    for (const std::string& value : values)
        text += (&value == &values.front() ? "" : ", ") + printable(value);
    return text;
}

std::string cell(const Property* property) {
    return property == nullptr ? Table::absent : cell(property->values);
}

// Without a header: property and value, one property a line.
std::string vertical(const Row& row) {
    std::size_t nameWidth = 0;
    for (const Property& property : row.properties)
        nameWidth = std::max(nameWidth, width(property.description->property));
    std::string text;
    for (const Property& property : row.properties) {
        const std::string name = property.description->property;
        text += name + std::string(nameWidth - width(name), ' ') + "  " + cell(property.values) + '\n';
    }
    return text;
}

std::vector<const ExtItem*> usedColumns(const Group& group) {
    std::vector<const ExtItem*> columns = propertiesOf(group.number);
    const auto unused = [&group](const ExtItem* column) {
        return std::none_of(group.rows.begin(), group.rows.end(),
                            [column](const Row& row) { return row.find(column) != nullptr; });
    };
    columns.erase(std::remove_if(columns.begin(), columns.end(), unused), columns.end());
    return columns;
}

std::string horizontal(const Group& group) {
    const std::vector<const ExtItem*> columns = usedColumns(group);
    std::vector<std::string> header = {"Row"};
    for (const ExtItem* column : columns)
        header.emplace_back(column->property);
    Table table(std::move(header));
    for (const Row& row : group.rows) {
        std::vector<std::string> cells = {std::to_string(row.number)};
        for (const ExtItem* column : columns)
            cells.push_back(cell(row.find(column)));
        table.add(std::move(cells));
    }
    return table.text();
}

std::string nominators(long group) {
    std::string text;
    for (const ExtItem* item : propertiesOf(group))
        text += (text.empty() ? "" : " ") + std::to_string(item->nom) + "=" + item->property;
    return text;
}

// Empty when nothing has changed.
std::string changed(const std::vector<Change>& changes) {
    Table table({"Property", "Asked for", "Before", "After"});
    bool any = false;
    for (const Change& change : changes) {
        if (!change.isChanged())
            continue;
        table.add({change.description->property, change.asked ? "yes" : "no", cell(change.before),
                   cell(change.after)});
        any = true;
    }
    return any ? table.text() : std::string();
}

} // namespace

void TableFormat::writeCatalogue() {
    Table table({"Group", "Class", "Nominators"});
    for (long group = 0; group <= OWB_MAX_GROUP; ++group)
        table.add({std::to_string(group), ExtGroupCimClass[group], nominators(group)});
    m_output.write(table.text(m_output.terminalWidth()));
}

void TableFormat::writeGroup(const Group& group) {
    if (group.status != OWB_DONE && group.rows.empty())
        return; // the message on standard error says all there is to say
    std::string text = (m_first ? "" : "\n") + heading(group);
    m_first = false;
    if (group.rows.empty())
        text += "no data\n";
    else if (group.rows.size() == 1)
        text += vertical(group.rows.front());
    else
        text += horizontal(group);
    m_output.write(text);
}

void TableFormat::writeWrite(const Write& write) {
    if (!write.error.empty())
        return; // the message on standard error says all there is to say
    const std::string table = changed(write.changes);
    m_output.write("Group " + std::to_string(write.group) + "  " + ExtGroupCimClass[write.group] + "  (row " +
                   std::to_string(write.row) + ")\n" + (table.empty() ? "no change\n" : table));
}

void TableFormat::writeConversion(const Conversion& conversion) {
    if (conversion.number)
        m_output.write(std::to_string(*conversion.number) + '\n');
}

void TableFormat::writeProcesses(const std::vector<Process>& processes) {
    m_output.write(processTable(processes).text(m_output.terminalWidth()));
}

} // namespace owbctl
