#include "metrics/GroupFamilies.hpp"

#include "metrics/Naming.hpp"
#include "metrics/Value.hpp"
#include "util/Utf8.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace metrics {

using agent::Attribute;
using agent::Group;
using agent::Row;

namespace {

/** Appends a label, with U+FFFD in place of bytes that are not UTF-8. Appends none for an empty value. */
void addLabel(Labels& labels, const std::string& name, const std::string& value) {
    if (!value.empty())
        labels.push_back({name, utf8::valid(value)});
}

/** The attributes of a row with a use, as labels. */
Labels labelsOf(const Row& row, const std::vector<const Attribute*>& attributes, Use use) {
    Labels labels;
    for (const Attribute* attribute : attributes) {
        if (useOf(*attribute) == use)
            addLabel(labels, labelOf(*attribute), textIn(row, *attribute));
    }
    return labels;
}

/** A row and the labels of all its samples. */
struct LabelledRow {
    const Row* row;
    Labels key;
    /** Of its sample of type Type::info. */
    Labels all;
};

/** The labels of a row in a form that distinguishes any two. */
std::string identityOf(const Labels& labels) {
    std::string identity;
    for (const Label& label : labels)
        identity += label.name + '=' + std::to_string(label.value.size()) + ':' + label.value;
    return identity;
}

class RowFamilies {
public:
    RowFamilies(const Group& group, const Subject& subject)
        : m_subject(subject)
        , m_attributes(agent::attributesOf(group.number)) {
        std::set<std::string> identities;
        for (const Row& row : group.rows) {
            LabelledRow labelled = labelledRow(row);
            const bool isLabels = subject.shape == Shape::labels;
            if (identities.insert(identityOf(isLabels ? labelled.all : labelled.key)).second)
                m_rows.push_back(std::move(labelled));
            else
                ++m_result.droppedRows;
        }
    }

    GroupFamilies make() {
        add(infoFamily());
        for (const Attribute* attribute : m_attributes) {
            if (useOf(*attribute) == Use::value)
                add(valueFamily(*attribute));
        }
        return std::move(m_result);
    }

private:
    LabelledRow labelledRow(const Row& row) const {
        Labels key = labelsOf(row, m_attributes, Use::key);
        Labels all = key;
        for (Label& label : labelsOf(row, m_attributes, Use::label))
            all.push_back(std::move(label));
        return {&row, std::move(key), std::move(all)};
    }

    /** Has no samples if no row has labels besides its key. */
    Family infoFamily() const {
        Family family = infoFamilyOf(m_subject);
        for (const LabelledRow& each : m_rows) {
            if (each.all.size() > each.key.size())
                family.samples.push_back({each.all, "1"});
        }
        return family;
    }

    Family valueFamily(const Attribute& attribute) const {
        Family family = familyOf(attribute);
        for (const LabelledRow& each : m_rows) {
            if (std::optional<std::string> value = valueIn(*each.row, attribute))
                family.samples.push_back({each.key, std::move(*value)});
        }
        return family;
    }

    void add(Family family) {
        if (!family.samples.empty())
            m_result.families.push_back(std::move(family));
    }

    const Subject& m_subject;
    const std::vector<const Attribute*> m_attributes;
    std::vector<LabelledRow> m_rows;
    GroupFamilies m_result;
};

/** The label of a code: its meaning. Codes without one share a label, so that a peer cannot make many. */
std::string stateOf(const Row& row, const Attribute& attribute) {
    const agent::Property* const property = row.find(&attribute);
    if (property == nullptr)
        return "unknown";
    const char* const meaning = attribute.values.find(property->values.front());
    return meaning == nullptr ? "other" : inSnakeCase(meaning);
}

/** Counts rows by state. Known states without rows are 0. */
Family countFamily(const Group& group, const Count& count, const Attribute& attribute) {
    std::map<std::string, std::size_t> rowsByState;
    for (const agent::ValueName& each : attribute.values)
        rowsByState[inSnakeCase(each.name)] = 0;
    for (const Row& row : group.rows)
        ++rowsByState[stateOf(row, attribute)];
    Family family{count.name, Type::gauge, "", count.help, {}};
    for (const auto& [state, rows] : rowsByState)
        family.samples.push_back({{{count.label, state}}, std::to_string(rows)});
    return family;
}

Family countFamily(const Group& group, const Count& count) {
    if (count.nominator >= 0)
        return countFamily(group, count,
                           *agent::findAttribute(group.number, std::to_string(count.nominator)));
    return {count.name, Type::gauge, "", count.help, {{{}, std::to_string(group.rows.size())}}};
}

GroupFamilies sumsOf(const Group& group) {
    GroupFamilies result;
    for (const Count& count : countsOf(group.number))
        result.families.push_back(countFamily(group, count));
    for (const Attribute* attribute : agent::attributesOf(group.number)) {
        if (useOf(*attribute) != Use::value)
            continue;
        if (std::optional<std::string> value = valueIn(group.rows, *attribute)) {
            result.families.push_back(familyOf(*attribute));
            result.families.back().samples.push_back({{}, std::move(*value)});
        }
    }
    return result;
}

} // namespace

GroupFamilies familiesOf(const Group& group) {
    if (group.status != OWB_DONE)
        return {};
    const Subject& subject = *subjectOf(group.number);
    return subject.shape == Shape::sums ? sumsOf(group) : RowFamilies(group, subject).make();
}

} // namespace metrics
