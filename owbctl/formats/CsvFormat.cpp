#include "formats/CsvFormat.hpp"

#include "formats/ProcessTable.hpp"
#include "output/Text.hpp"

#include <algorithm>

namespace owbctl {

using namespace agent;

namespace {

bool mustBeQuoted(std::string_view text) {
    return text.empty() || text.find_first_of(",\"\r\n") != std::string_view::npos || text.front() == ' ' ||
           text.back() == ' ';
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text)
        result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + '"';
}

/** Records of comma-separated values (RFC 4180), each ended by a line feed. */
class Csv {
public:
    void header(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            text(name);
        end();
    }

    /** Adds a text field. It is quoted if necessary and if it is empty. */
    Csv& text(std::string_view text) {
        const std::string valid = validUtf8(text);
        return unquoted(mustBeQuoted(valid) ? quoted(valid) : valid);
    }

    /** Adds a field that needs no quotes; the empty text means no value. */
    Csv& unquoted(std::string_view text) {
        m_text += m_isFirst ? "" : ",";
        m_text += text;
        m_isFirst = false;
        return *this;
    }

    template <class Number>
    Csv& number(Number number) {
        return unquoted(std::to_string(number));
    }

    /** Adds one field with all values, separated by line feeds; no value for an empty list. */
    Csv& values(const std::vector<std::string>& values) {
        if (values.empty())
            return unquoted("");
        std::string all;
        for (const std::string& value : values)
            all += (&value == &values.front() ? "" : "\n") + value;
        return text(all);
    }

    /** Ends a record. */
    void end() {
        m_text += '\n';
        m_isFirst = true;
    }

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
    bool m_isFirst = true;
};

std::string rate(const SampledProperty& sampled) {
    return sampled.perSecond ? std::to_string(*sampled.perSecond) : std::string();
}

const char* yesOrNo(bool is) {
    return is ? "yes" : "no";
}

/** The properties of all groups, or those that are selected, each name once. */
std::vector<std::string> columnsOf(const std::vector<Group>& groups) {
    std::vector<std::string> columns;
    for (const Group& group : groups) {
        for (const Attribute* attribute : group.selected.value_or(attributesOf(group.number))) {
            if (std::find(columns.begin(), columns.end(), attribute->property) == columns.end())
                columns.emplace_back(attribute->property);
        }
    }
    return columns;
}

} // namespace

void CsvFormat::writeCatalogue(const std::vector<long>& groups) {
    Csv csv;
    csv.header({"group", "class", "nominator", "property", "counter", "name", "kind", "unit", "settable",
                "description"});
    for (const long group : groups) {
        for (const Attribute* attribute : attributesByNominator(group)) {
            csv.number(group)
                .text(classOf(group).name)
                .number(attribute->nominator)
                .text(attribute->property);
            csv.text(yesOrNo(attribute->kind == Kind::counter)).text(classOf(group).shortName);
            csv.text(wordOf(attribute->kind)).unquoted(attribute->unit);
            csv.text(yesOrNo(attribute->isSettable())).text(attribute->description).end();
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
                const Property* const property = row.find(findAttribute(group.number, column));
                csv.values(property == nullptr ? std::vector<std::string>() : property->values);
            }
            csv.end();
        }
    }
    m_output.write(csv.text());
}

void CsvFormat::writeSample(const Sample& sample) {
    Csv csv;
    if (!m_output.isBegun())
        csv.header({"sample", "time", "group", "class", "row", "property", "value", "changed", "per_second",
                    "vanished"});
    const auto begin = [&csv, &sample](long row) -> Csv& {
        csv.number(sample.number).text(utc(sample.time)).number(sample.group.number);
        return csv.text(sample.group.className).number(row);
    };
    for (const SampledRow& row : sample.rows) {
        for (const SampledProperty& sampled : row.properties) {
            begin(row.number).text(sampled.property.attribute->property).values(sampled.property.values);
            csv.text(yesOrNo(sampled.isChanged)).unquoted(rate(sampled)).text(yesOrNo(false)).end();
        }
    }
    for (const Row& row : sample.vanished) {
        for (const Property& property : row.properties) {
            begin(row.number).text(property.attribute->property).values(property.values);
            csv.text(yesOrNo(false)).unquoted("").text(yesOrNo(true)).end();
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
        csv.number(write.group).text(classOf(write.group).name).number(write.row);
        csv.text(change.attribute->property).text(yesOrNo(change.requested.has_value()));
        csv.values(change.before).values(change.after).end();
    }
    m_output.write(csv.text());
}

void CsvFormat::writeConversion(const Conversion& conversion) {
    Csv csv;
    csv.header({"text", "unit", "value"});
    csv.text(conversion.text).text(conversion.unit);
    csv.unquoted(conversion.number ? std::to_string(*conversion.number) : std::string()).end();
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
