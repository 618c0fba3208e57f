#include "formats/CsvFormat.hpp"

#include "agent/Items.hpp"
#include "agent/Counter.hpp"
#include "formats/Csv.hpp"
#include "formats/ProcessFields.hpp"
#include "output/Text.hpp"

#include <algorithm>

namespace owbctl {
namespace {

std::string rate(const Sampled& sampled) {
    return sampled.perSecond ? std::to_string(*sampled.perSecond) : std::string();
}

const char* yesOrNo(bool is) {
    return is ? "yes" : "no";
}

/** The properties of all groups, each name once. */
std::vector<std::string> columnsOf(const std::vector<Group>& groups) {
    std::vector<std::string> columns;
    for (const Group& group : groups) {
        for (const ExtItem* item : propertiesOf(group.number)) {
            if (std::find(columns.begin(), columns.end(), item->property) == columns.end())
                columns.emplace_back(item->property);
        }
    }
    return columns;
}

} // namespace

void CsvFormat::writeCatalogue(const std::vector<long>& groups) {
    Csv csv;
    csv.header({"group", "class", "nominator", "property", "counter"});
    for (const long group : groups) {
        for (const ExtItem* item : propertiesOf(group)) {
            csv.number(group).text(ExtGroupCimClass[group]).number(item->nom).text(item->property);
            csv.text(yesOrNo(isCounter(*item))).end();
        }
    }
    m_output.write(csv.text());
}

void CsvFormat::writeGroup(const Group& group) {
    m_groups.push_back(group);
}

void CsvFormat::endGroups() {
    const std::vector<std::string> columns = columnsOf(m_groups);
    std::vector<std::string> header{"group", "class", "row"};
    header.insert(header.end(), columns.begin(), columns.end());
    Csv csv;
    csv.header(header);
    for (const Group& group : m_groups) {
        for (const Row& row : group.rows) {
            csv.number(group.number).text(group.className).number(row.number);
            for (const std::string& column : columns) {
                const Property* const property = row.find(findProperty(group.number, column));
                csv.values(property == nullptr ? std::vector<std::string>() : property->values);
            }
            csv.end();
        }
    }
    m_output.write(csv.text());
}

void CsvFormat::writeSample(const Sample& sample) {
    Csv csv;
    if (sample.number == 1)
        csv.header({"sample", "time", "group", "class", "row", "property", "value", "changed", "per_second"});
    for (const SampledRow& row : sample.rows) {
        for (const Sampled& sampled : row.properties) {
            csv.number(sample.number).text(utc(sample.time)).number(sample.group.number);
            csv.text(sample.group.className).number(row.number).text(sampled.property.description->property);
            csv.values(sampled.property.values).text(yesOrNo(sampled.isChanged)).bare(rate(sampled)).end();
        }
    }
    m_output.write(csv.text());
}

void CsvFormat::writeWrite(const Write& write) {
    Csv csv;
    csv.header({"group", "class", "row", "property", "asked", "before", "after"});
    for (const Change& change : write.changes) {
        if (!change.isChanged())
            continue;
        csv.number(write.group).text(ExtGroupCimClass[write.group]).number(write.row);
        csv.text(change.description->property).text(yesOrNo(change.asked.has_value()));
        csv.values(change.before).values(change.after).end();
    }
    m_output.write(csv.text());
}

void CsvFormat::writeConversion(const Conversion& conversion) {
    Csv csv;
    csv.header({"text", "unit", "value"});
    csv.text(conversion.text).text(conversion.unit);
    csv.bare(conversion.number ? std::to_string(*conversion.number) : std::string()).end();
    m_output.write(csv.text());
}

void CsvFormat::writeProcesses(const std::vector<Process>& processes) {
    std::vector<std::string> header{"Handle"};
    for (const ProcessField& field : fieldsOf(Process()))
        header.push_back(field.name);
    Csv csv;
    csv.header(header);
    for (const Process& process : processes) {
        csv.text(process.handle);
        for (const ProcessField& field : fieldsOf(process))
            csv.values(field.values);
        csv.end();
    }
    m_output.write(csv.text());
}

void CsvFormat::writeCheck(const Check& check) {
    Csv csv;
    if (!m_output.isBegun())
        csv.header({"name", "result", "finding", "advice"});
    csv.text(check.name).text(wordOf(check.result)).text(check.finding);
    csv.values(check.advice.empty() ? std::vector<std::string>() : std::vector{check.advice}).end();
    m_output.write(csv.text());
}

void CsvFormat::writeVersions(const std::vector<Version>& versions) {
    Csv csv;
    csv.header({"name", "version"});
    for (const Version& version : versions)
        csv.text(version.name).text(version.version).end();
    m_output.write(csv.text());
}

} // namespace owbctl
