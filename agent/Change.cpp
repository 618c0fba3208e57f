#include "agent/Change.hpp"

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

/** Outcome of sending the values. */
struct Sent {
    long status;
    /** The failure that the library traced; empty if there was none. */
    Failure failure;
};

long setGroup(const WriteRequest& request) {
    Queue queue;
    for (const Assignment& assignment : request.assignments) {
        if (!OWB_itemAdd(queue.head(), request.group, assignment.attribute->nominator, request.row, 0,
                         assignment.value.c_str()))
            throw std::bad_alloc();
    }
    return OWB_setGroup(request.group, queue.head());
}

/** Sends the values once, and looks into the trace for the outcome: the status does not include it. */
Sent send(const WriteRequest& request, const Trace* trace) {
    const std::size_t before = trace == nullptr ? 0 : trace->size();
    const long status = setGroup(request);
    const std::optional<Thrown> thrown = trace == nullptr ? std::nullopt : trace->lastException(before);
    if (thrown)
        return {status, failureOf(*thrown, OWB_URLGet())};
    return {status, status == OWB_DONE ? Failure() : failureOf(status)};
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

Write writeRow(const WriteRequest& request, const Trace* trace) {
    Write write{request.group, request.row, OWB_DONE, {}, {}};
    const auto failed = [&write](long status, const Failure& failure, const std::string& step) {
        write.status = status;
        write.failure = failure;
        write.error = step + ": " + failure.text;
        return write;
    };
    const Group before = readGroup(request.group);
    if (before.status != OWB_DONE)
        return failed(before.status, before.failure, "cannot read before the write, nothing was written");
    const Sent sent = send(request, trace);
    if (sent.status != OWB_DONE)
        return failed(sent.status, sent.failure, "cannot write, perhaps after the values were sent");
    write.failure = sent.failure;
    const Group after = readGroup(request.group);
    if (after.status != OWB_DONE)
        return failed(after.status, after.failure,
                      "cannot read back, the values were sent and may have been accepted");
    compareRows(write, before, after, request.assignments);
    return write;
}

} // namespace agent
