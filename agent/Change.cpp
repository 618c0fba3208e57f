#include "agent/Change.hpp"

#include "agent/Endpoint.hpp"

#include <new>

namespace agent {
namespace {

std::vector<std::string> valuesIn(const Row& row, const Attribute* attribute) {
    const Property* const property = row.find(attribute);
    return property == nullptr ? std::vector<std::string>() : property->values;
}

std::optional<std::string> valueFor(const Attribute* attribute, const std::vector<Assignment>& assignments) {
    for (const Assignment& assignment : assignments) {
        if (assignment.attribute == attribute)
            return assignment.value;
    }
    return std::nullopt;
}

long send(const WriteRequest& request) {
    Queue queue;
    for (const Assignment& assignment : request.assignments) {
        if (!OWB_itemAdd(queue.head(), request.group, assignment.attribute->nominator, request.row, 0,
                         assignment.value.c_str()))
            throw std::bad_alloc();
    }
    return OWB_setGroup(request.group, queue.head());
}

/** Sets the changes or the error. A row without values makes no items, so it is absent from a Group. */
void compareRows(Write& write, const Group& before, const Group& after,
                 const std::vector<Assignment>& assignments) {
    const Row withoutValues{write.row, {}};
    const Row* const rowBefore = before.find(write.row);
    const Row* const rowAfter = after.find(write.row);
    const std::string rows = "; rows with values: " + std::to_string(after.rows.size());
    if (rowAfter != nullptr)
        write.changes =
            compare(write.group, rowBefore != nullptr ? *rowBefore : withoutValues, *rowAfter, assignments);
    else if (rowBefore != nullptr)
        write.error = "after the write the row is gone or has no value" + rows;
    else
        write.error = "no such row, or all values were rejected" + rows;
}

} // namespace

std::vector<Change> compare(long group, const Row& before, const Row& after,
                            const std::vector<Assignment>& assignments) {
    std::vector<Change> changes;
    for (const Attribute* attribute : attributesOf(group))
        changes.push_back({attribute, valueFor(attribute, assignments), valuesIn(before, attribute),
                           valuesIn(after, attribute)});
    return changes;
}

Write writeRow(const WriteRequest& request, const std::string& url) {
    Write write{request.group, request.row, OWB_DONE, {}, {}};
    const auto failed = [&write, &url](long status, const std::string& step) {
        write.status = status;
        write.error = step + ": " + failureText(status, url);
        return write;
    };
    const Group before = readGroup(request.group);
    if (before.status != OWB_DONE)
        return failed(before.status, "cannot read before the write, nothing was written");
    const long sent = send(request);
    if (sent != OWB_DONE)
        return failed(sent, "cannot write, perhaps after the values were sent");
    const Group after = readGroup(request.group);
    if (after.status != OWB_DONE)
        return failed(after.status, "cannot read back, the values were sent and may have been accepted");
    compareRows(write, before, after, request.assignments);
    return write;
}

} // namespace agent
