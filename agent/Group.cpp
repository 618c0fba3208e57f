#include "agent/Group.hpp"

#include "agent/Client.hpp"

#include <algorithm>
#include <functional>
#include <optional>

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

/** Reads items of a group into a queue and returns the status of the library. */
using Read = std::function<long(_qHead* queue)>;

/** Makes the same request, and returns why it failed. */
using Repeat = std::function<std::optional<Failure>()>;

Group readOnce(long number, const Read& read) {
    Queue queue;
    const long status = read(queue.head());
    return {number, classOf(number).name, status, rowsOf(number, queue),
            status == OWB_DONE ? Failure() : failureOf(status)};
}

Group readTwice(long number, const Read& read, const Repeat& repeat) {
    Group group = readOnce(number, read);
    if (group.status != OWB_EXCEPTION && group.status != OWB_NO_CONNECTION)
        return group;
    std::optional<Failure> failure = reconnect();
    if (!failure)
        failure = repeat();
    if (!failure)
        return readOnce(number, read);
    group.failure = std::move(*failure);
    return group;
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

Group readGroup(long number) {
    return readTwice(
        number, [number](_qHead* queue) { return OWB_getGroup(number, queue); },
        [number] { return requestInstances(classOf(number).name); });
}

Group readInstance(long number, const std::string& path, long row) {
    std::string text = path; // the library takes char*
    return readTwice(
        number, [&](_qHead* queue) { return OWB_getInstance(number, text.data(), row, queue); },
        [&path] { return requestInstance(path); });
}

} // namespace agent
