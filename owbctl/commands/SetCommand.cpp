#include "commands/SetCommand.hpp"

#include "agent/Queue.hpp"
#include "agent/Status.hpp"
#include "commands/Report.hpp"
#include "output/Text.hpp"

#include <iostream>
#include <new>

namespace owbctl {
namespace {

long send(const WriteRequest& request) {
    Queue queue;
    for (const Assignment& assignment : request.assignments) {
        if (!OWB_itemAdd(queue.head(), request.group, assignment.description->nom, request.row, 0,
                         assignment.value.c_str()))
            throw std::bad_alloc();
    }
    return OWB_setGroup(request.group, queue.head());
}

/** Fills in what became of the row. Of a row without values the library tells nothing. */
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
        write.error = "after the write the row is gone, or has no value any more" + rows;
    else
        write.error = "there is no such row, or no value was taken" + rows;
}

Write carryOut(const WriteRequest& request, const std::string& url) {
    Write write{request.group, request.row, OWB_DONE, {}, {}};
    const auto failed = [&write, &url](long status, const std::string& step) {
        write.status = status;
        write.error = step + ": " + failureText(status, url);
        return write;
    };
    const Group before = readGroup(request.group);
    if (before.status != OWB_DONE)
        return failed(before.status, "reading before the write failed, nothing was written");
    const long sent = send(request);
    if (sent != OWB_DONE)
        return failed(sent, "writing failed, perhaps after the values were sent");
    const Group after = readGroup(request.group);
    if (after.status != OWB_DONE)
        return failed(after.status, "reading back failed, the values were sent and may have been taken");
    compareRows(write, before, after, request.assignments);
    return write;
}

void reportError(const Write& write) {
    std::cerr << "owbctl: group " << write.group << " (" << ExtGroupCimClass[write.group] << "), row "
              << write.row << ": " << printable(write.error);
    if (write.status != OWB_DONE)
        std::cerr << " (status " << write.status << ')';
    std::cerr << '\n';
    if (mayBeUnreachable(write.status))
        hintAtDoctor();
}

std::string quoted(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values)
        text += (text.empty() ? "'" : ", '") + printable(value) + "'";
    return text.empty() ? "no value" : text;
}

bool reportRefused(const std::vector<Change>& changes) {
    bool any = false;
    for (const Change& change : changes) {
        if (!change.isRefused())
            continue;
        std::cerr << "owbctl: " << change.description->property << " was not taken: asked for "
                  << quoted({*change.asked}) << ", there is " << quoted(change.after) << '\n';
        any = true;
    }
    if (any)
        hintAtTrace();
    return any;
}

void warnOfCleared(const std::vector<Change>& changes) {
    std::string names;
    for (const Change& change : changes) {
        if (change.isCleared())
            names += (names.empty() ? "" : ", ") + std::string(change.description->property);
    }
    if (!names.empty())
        std::cerr << "owbctl: not named, and without a value now: " << names
                  << "\n        Some object managers replace the whole instance on a write and clear what it "
                     "does not carry.\n        To keep a value, name it in the same command.\n";
}

} // namespace

int setRow(const WriteRequest& request, Format& format, const std::string& url) {
    const Write write = carryOut(request, url);
    format.writeWrite(write);
    if (!write.error.empty()) {
        reportError(write);
        return write.status == OWB_DONE ? exitFailed : exitStatus(write.status);
    }
    const bool refused = reportRefused(write.changes);
    warnOfCleared(write.changes);
    return refused ? exitFailed : 0;
}

} // namespace owbctl
