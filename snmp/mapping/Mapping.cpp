#include "snmp/mapping/Mapping.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace snmp {
namespace {

bool holds(const std::vector<long>& groups, long group) {
    return std::find(groups.begin(), groups.end(), group) != groups.end();
}

bool readsGroup(const TableRule& table, long group) {
    return holds(table.groups, group) || (table.join && table.join->group == group);
}

/** The number of a column whose object identifier is that of the entry and one more; nothing for others. */
std::optional<std::uint32_t> columnIn(const Oid& entry, const char* oid) {
    const Oid object = parseOid(oid);
    return startsWith(object, entry) && object.size() == entry.size() + 1 ? std::optional(object.back())
                                                                          : std::nullopt;
}

bool isInCatalogue(std::string_view oid) {
    return std::any_of(agent::attributes.begin(), agent::attributes.end(),
                       [oid](const agent::Attribute& attribute) { return attribute.mib.oid == oid; });
}

using Columns = std::map<std::uint32_t, Column>;

void addDerived(Columns& columns, const TableRule& table, const Oid& entry) {
    for (const agent::Attribute& attribute : agent::attributes) {
        const auto number = columnIn(entry, attribute.mib.oid);
        if (!number || !readsGroup(table, attribute.group))
            continue;
        Column& column =
            columns.try_emplace(*number, Column{*number, derivedRule(attribute), {}}).first->second;
        column.sources.push_back(&attribute);
    }
}

/** Objects that exist once share an entry, so that a rule may be one of another table with the same entry. */
bool belongsTo(const ObjectRule& rule, const TableRule& table, bool isDerived) {
    if (rule.sources.empty())
        return isDerived || !isInCatalogue(rule.oid);
    return std::all_of(rule.sources.begin(), rule.sources.end(),
                       [&table](const Address& source) { return readsGroup(table, source.group); });
}

void applyRule(Columns& columns, const TableRule& table, const Oid& entry, const ObjectRule& rule) {
    const auto number = columnIn(entry, rule.oid);
    if (!number || !belongsTo(rule, table, columns.count(*number) != 0))
        return;
    if (rule.access == Access::notAccessible) {
        columns.erase(*number);
        return;
    }
    Column& column = columns.try_emplace(*number, Column{*number, rule, {}}).first->second;
    column.rule = rule;
    if (!rule.sources.empty())
        column.sources.clear();
    for (const Address& source : rule.sources)
        column.sources.push_back(attributeAt(source.group, source.nominator));
}

TableMapping mappingOf(const TableRule& table) {
    const Oid entry = parseOid(table.entry);
    Columns columns;
    addDerived(columns, table, entry);
    for (const ObjectRule& rule : objectRules())
        applyRule(columns, table, entry, rule);
    TableMapping mapping{&table, joined(mib2, entry), {}};
    for (auto& [number, column] : columns)
        mapping.columns.push_back(std::move(column));
    return mapping;
}

std::optional<Value> valueOfText(const Column& column, const std::string& content) {
    const ObjectRule& rule = column.rule;
    if (*rule.prefix == '\0')
        return encoded(rule.syntax, content, rule.size);
    return encoded(rule.syntax, rule.prefix + content, rule.size);
}

} // namespace

const std::vector<TableMapping>& tableMappings() {
    static const std::vector<TableMapping> mappings = [] {
        std::vector<TableMapping> all;
        for (const TableRule& table : tableRules())
            all.push_back(mappingOf(table));
        return all;
    }();
    return mappings;
}

Value valueOf(const Column& column, const Record& record, const Context& context) {
    const ObjectRule& rule = column.rule;
    const auto content = rule.content(Inputs{record, column.sources, rule.codes, context});
    std::optional<Value> value;
    if (content)
        value = valueOfText(column, *content);
    const char* const instead = content ? rule.otherwise : rule.missing;
    if (!value && instead != nullptr)
        value = valueOfText(column, instead);
    return value ? std::move(*value) : Value();
}

Table tableOf(const TableMapping& mapping, const Readings& readings, const Context& context) {
    std::vector<Row> rows;
    for (const Record& record : recordsOf(*mapping.rule, readings)) {
        std::optional<Oid> index = indexOf(*mapping.rule, record);
        if (!index)
            continue;
        Row row{std::move(*index), record.group, {}};
        row.cells.reserve(mapping.columns.size());
        for (const Column& column : mapping.columns)
            row.cells.push_back(valueOf(column, record, context));
        rows.push_back(std::move(row));
    }
    return Table(std::move(rows));
}

const agent::Attribute* writableAttribute(const Column& column, long group) {
    const auto source =
        std::find_if(column.sources.begin(), column.sources.end(),
                     [group](const agent::Attribute* attribute) { return attribute->group == group; });
    const bool isWritable = column.rule.access == Access::readWrite && source != column.sources.end() &&
                            (*source)->isWritable && !agent::classOf(group).writeKeys.empty();
    return isWritable ? *source : nullptr;
}

} // namespace snmp
