#include "agent/Group.hpp"

#include "agent/Items.hpp"
#include "agent/Connection.hpp"
#include "agent/Status.hpp"

#include <algorithm>

namespace owbctl {
namespace {

std::vector<Property> inTableOrder(const std::vector<const ExtItem*>& descriptions,
                                   ValuesByNominator& values) {
    std::vector<Property> properties;
    for (const ExtItem* description : descriptions) {
        const auto found = values.find(description->nom);
        if (found != values.end())
            properties.push_back({description, std::move(found->second)});
    }
    return properties;
}

Group readOnce(long number, const Read& read) {
    Queue queue;
    const long status = read(queue.head());
    return {number, ExtGroupCimClass[number], status, rowsOf(number, queue)};
}

} // namespace

const Property* Row::find(const ExtItem* description) const {
    const auto found =
        std::find_if(properties.begin(), properties.end(),
                     [description](const Property& property) { return property.description == description; });
    return found == properties.end() ? nullptr : &*found;
}

const Row* Group::find(long row) const {
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [row](const Row& candidate) { return candidate.number == row; });
    return found == rows.end() ? nullptr : &*found;
}

std::vector<Row> rowsOf(long group, const Queue& queue) {
    const std::vector<const ExtItem*> descriptions = propertiesOf(group);
    std::vector<Row> rows;
    for (auto& [row, values] : valuesByRow(queue, group))
        rows.push_back({row, inTableOrder(descriptions, values)});
    return rows;
}

Group readGroup(long number, const Read& read) {
    Group group = readOnce(number, read);
    if (mayBeUnreachable(group.status) && connectAnew().empty())
        group = readOnce(number, read);
    return group;
}

Group readGroup(long number) {
    return readGroup(number, [number](_qHead* queue) { return OWB_getGroup(number, queue); });
}

} // namespace owbctl
