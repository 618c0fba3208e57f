#include "agent/Group.hpp"

#include "agent/Endpoint.hpp"

#include <algorithm>

namespace agent {
namespace {

std::vector<Property> inCatalogueOrder(const std::vector<const Attribute*>& all, ValuesByNominator& values) {
    std::vector<Property> properties;
    for (const Attribute* attribute : all) {
        const auto found = values.find(attribute->nominator);
        if (found != values.end())
            properties.push_back({attribute, std::move(found->second)});
    }
    return properties;
}

Group readOnce(long number, const Read& read) {
    Queue queue;
    const long status = read(queue.head());
    return {number, classOf(number).name, status, rowsOf(number, queue)};
}

} // namespace

const Property* Row::find(const Attribute* attribute) const {
    const auto found =
        std::find_if(properties.begin(), properties.end(),
                     [attribute](const Property& property) { return property.attribute == attribute; });
    return found == properties.end() ? nullptr : &*found;
}

const Row* Group::find(long row) const {
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [row](const Row& candidate) { return candidate.number == row; });
    return found == rows.end() ? nullptr : &*found;
}

std::vector<Row> rowsOf(long group, const Queue& queue) {
    const std::vector<const Attribute*> all = attributesOf(group);
    std::vector<Row> rows;
    for (auto& [row, values] : valuesByRow(queue, group))
        rows.push_back({row, inCatalogueOrder(all, values)});
    return rows;
}

Group readGroup(long number, const Read& read) {
    Group group = readOnce(number, read);
    if (isConnectionFailure(group.status) && reconnect().empty())
        group = readOnce(number, read);
    return group;
}

Group readGroup(long number) {
    return readGroup(number, [number](_qHead* queue) { return OWB_getGroup(number, queue); });
}

} // namespace agent
