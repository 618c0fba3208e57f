#include "formats/LineFormat.hpp"

#include "formats/GroupTable.hpp"
#include "formats/ProcessTable.hpp"
#include "output/Text.hpp"

namespace owbctl {

using namespace agent;

namespace {

std::string rowName(long group, long row) {
    return std::to_string(group) + " " + classOf(group).name + "[" + std::to_string(row) + "].";
}

std::string lines(const std::string& name, const std::vector<std::string>& values) {
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::string index = values.size() > 1 ? "[" + std::to_string(i) + "]" : "";
        text += name + index + " = " + printable(values[i]) + '\n';
    }
    return text;
}

std::string line(const std::string& name, const std::string& value) {
    return name + " = " + printable(value) + '\n';
}

} // namespace

void LineFormat::writeCatalogue(const std::vector<long>& groups) {
    std::string text;
    for (const long group : groups) {
        for (const Attribute* attribute : attributesByNominator(group))
            text += line(std::to_string(group) + " " + classOf(group).name + "." + attribute->property,
                         std::to_string(attribute->nominator));
    }
    m_output.write(text);
}

void LineFormat::writeGroup(const Group& group) {
    std::string text;
    for (const Row& row : group.rows) {
        for (const Property& property : row.properties)
            text += lines(rowName(group.number, row.number) + property.attribute->property, property.values);
    }
    m_output.write(text);
}

void LineFormat::writeSample(const Sample& sample) {
    std::string text;
    for (const SampledRow& row : sample.rows) {
        for (const SampledProperty& sampled : row.properties) {
            if (!sample.isFirst && !sampled.isChanged)
                continue;
            const std::string suffix = mark(sampled);
            text += rowName(sample.group.number, row.number) + sampled.property.attribute->property + " = " +
                    cell(sampled.property.values) + (suffix.empty() ? "" : " " + suffix) + '\n';
        }
    }
    for (const Row& row : sample.vanished)
        text += std::to_string(sample.group.number) + " " + sample.group.className + " " + vanishedText(row) +
                '\n';
    m_output.write(text);
}

void LineFormat::writeWrite(const Write& write) {
    std::string text;
    for (const Change& change : write.changes) {
        if (change.isChanged())
            text += rowName(write.group, write.row) + change.attribute->property + " = " +
                    cell(change.after) + " (was " + cell(change.before) + ")\n";
    }
    m_output.write(text);
}

void LineFormat::writeConversion(const Conversion& conversion) {
    if (conversion.number)
        m_output.write(std::to_string(*conversion.number) + '\n');
}

void LineFormat::writeProcesses(const std::vector<Process>& processes) {
    std::string text;
    for (const Process& process : processes) {
        for (const ProcessField& field : fieldsOf(process))
            text += lines(printable(process.handle) + "." + field.name, field.values);
    }
    m_output.write(text);
}

void LineFormat::writeCheck(const Check& check) {
    m_output.write(line(check.name, std::string(wordOf(check.result)) + ": " + check.finding +
                                        (check.advice.empty() ? "" : "; " + check.advice)));
}

void LineFormat::writeVersions(const std::vector<Version>& versions) {
    std::string text;
    for (const Version& version : versions)
        text += line(version.name, version.version);
    m_output.write(text);
}

} // namespace owbctl
