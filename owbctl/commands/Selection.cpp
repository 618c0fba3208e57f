#include "commands/Selection.hpp"

#include "arguments/Names.hpp"
#include "arguments/Suggestion.hpp"
#include "util/Ascii.hpp"

#include <algorithm>

namespace owbctl {

using namespace agent;

namespace {

using Attributes = std::vector<const Attribute*>;

std::string nameOf(const std::string& condition) {
    return condition.substr(0, condition.find('='));
}

void checkProperty(const std::string& name, const std::vector<long>& groups) {
    const bool isKnown = std::any_of(groups.begin(), groups.end(),
                                     [&name](long group) { return findAttribute(group, name) != nullptr; });
    if (!isKnown)
        throw UsageError("none of the groups has a property '" + name + "'" +
                         propertySuggestion(name, groups));
}

/** The selected attributes that a group has, each once. */
Attributes selectedOf(long group, const Selection& selection) {
    Attributes attributes;
    for (const std::string& name : selection.properties) {
        const Attribute* const attribute = findAttribute(group, name);
        if (attribute != nullptr &&
            std::find(attributes.begin(), attributes.end(), attribute) == attributes.end())
            attributes.push_back(attribute);
    }
    return attributes;
}

bool meets(const Row& row, long group, const std::string& condition) {
    const Property* const property = row.find(findAttribute(group, nameOf(condition)));
    if (property == nullptr)
        return false;
    const std::string wanted = condition.substr(condition.find('=') + 1);
    const ValueNames& names = property->attribute->values;
    return std::any_of(property->values.begin(), property->values.end(), [&](const std::string& value) {
        const char* const name = names.find(value);
        return value == wanted || (name != nullptr && ascii::equalsIgnoreCase(name, wanted));
    });
}

bool isSelected(const Row& row, long group, const Selection& selection) {
    const bool isListed = selection.rows.empty() || std::find(selection.rows.begin(), selection.rows.end(),
                                                              row.number) != selection.rows.end();
    return isListed &&
           std::all_of(selection.conditions.begin(), selection.conditions.end(),
                       [&](const std::string& condition) { return meets(row, group, condition); });
}

const Attribute* attributeOf(const Property& property) {
    return property.attribute;
}

const Attribute* attributeOf(const SampledProperty& sampled) {
    return sampled.property.attribute;
}

/** Keeps the given properties of each row, in their order, and the rows that have any. */
template <class AnyRow>
void keepOnly(const Attributes& attributes, std::vector<AnyRow>& rows) {
    for (AnyRow& row : rows) {
        decltype(row.properties) kept;
        for (const Attribute* attribute : attributes) {
            for (const auto& property : row.properties) {
                if (attributeOf(property) == attribute)
                    kept.push_back(property);
            }
        }
        row.properties = std::move(kept);
    }
    rows.erase(
        std::remove_if(rows.begin(), rows.end(), [](const AnyRow& row) { return row.properties.empty(); }),
        rows.end());
}

void selectProperties(Group& group, const Selection& selection) {
    if (selection.properties.empty())
        return;
    group.selected = selectedOf(group.number, selection);
    keepOnly(*group.selected, group.rows);
}

} // namespace

void checkSelection(const Selection& selection, const std::vector<long>& groups) {
    for (const std::string& name : selection.properties)
        checkProperty(name, groups);
    for (const std::string& condition : selection.conditions) {
        if (condition.find('=') == std::string::npos)
            throw UsageError("'" + condition + "' does not have the form NAME=VALUE");
        checkProperty(nameOf(condition), groups);
    }
}

void select(Group& group, const Selection& selection) {
    selectRows(group, selection);
    selectProperties(group, selection);
}

void selectRows(Group& group, const Selection& selection) {
    const auto isUnwanted = [&](const Row& row) { return !isSelected(row, group.number, selection); };
    group.rows.erase(std::remove_if(group.rows.begin(), group.rows.end(), isUnwanted), group.rows.end());
}

void selectProperties(Sample& sample, const Selection& selection) {
    selectProperties(sample.group, selection);
    if (sample.group.selected)
        keepOnly(*sample.group.selected, sample.rows);
}

bool hasRow(const Group& group, long number, const Selection& selection) {
    const Row* const row = group.find(number);
    if (row == nullptr)
        return false;
    const Attributes selected = selectedOf(group.number, selection);
    return selection.properties.empty() ||
           std::any_of(selected.begin(), selected.end(),
                       [row](const Attribute* attribute) { return row->find(attribute) != nullptr; });
}

} // namespace owbctl
