#include "Group.hpp"

#include "Catalogue.hpp"
#include "Queue.hpp"

#include <algorithm>
#include <map>

namespace owbctl {
namespace {

using ValuesByNominator = std::map<long, std::vector<std::string>>;

std::map<long, ValuesByNominator> valuesByRow(const Queue& queue) {
    std::map<long, ValuesByNominator> rows;
    for (const _qItem* item = queue.begin(); item != queue.end(); item = item->next)
        rows[item->row][item->nom].emplace_back(item->val);
    return rows;
}

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

} // namespace

const Property* Row::find(const ExtItem* description) const {
    const auto found =
        std::find_if(properties.begin(), properties.end(),
                     [description](const Property& property) { return property.description == description; });
    return found == properties.end() ? nullptr : &*found;
}

Group readGroup(long number) {
    Queue queue;
    Group group{number, ExtGroupCimClass[number], OWB_getGroup(number, queue.head()), {}};
    const std::vector<const ExtItem*> descriptions = propertiesOf(number);
    for (auto& [row, values] : valuesByRow(queue))
        group.rows.push_back({row, inTableOrder(descriptions, values)});
    return group;
}

} // namespace owbctl
