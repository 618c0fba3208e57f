#include "commands/Set.hpp"

#include "commands/Report.hpp"
#include "output/Deadline.hpp"
#include "output/Text.hpp"

#include <iostream>

namespace owbctl {

using namespace agent;

namespace {

void report(const Write& write, const std::string& what) {
    std::cerr << "owbctl: group " << write.group << ", row " << write.row << ": " << printable(what) << '\n';
    if (write.failure.isOfConnection)
        hintAtDoctor();
}

std::string quoted(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values)
        text += (text.empty() ? "'" : ", '") + printable(value) + "'";
    return text.empty() ? "no value" : text;
}

bool reportRejected(const std::vector<Change>& changes) {
    bool any = false;
    for (const Change& change : changes) {
        if (!change.isRejected())
            continue;
        std::cerr << "owbctl: " << change.attribute->property << " rejected: requested "
                  << quoted({*change.requested}) << ", current " << quoted(change.after) << '\n';
        any = true;
    }
    return any;
}

template <class Predicate>
std::string namesWhere(const std::vector<Change>& changes, Predicate applies) {
    std::string names;
    for (const Change& change : changes) {
        if (applies(change))
            names += (names.empty() ? "" : ", ") + std::string(change.attribute->property);
    }
    return names;
}

// A user who writes nothing may expect no value.
void explainEmptyTexts(const std::vector<Change>& changes) {
    const std::string names = namesWhere(
        changes, [](const Change& change) { return change.requested == "" && !change.isRejected(); });
    if (!names.empty())
        std::cerr << "owbctl: now an empty text: " << names
                  << "\n        The library cannot write null; another client can take the value away.\n";
}

void warnAboutCleared(const std::vector<Change>& changes) {
    const std::string names = namesWhere(changes, [](const Change& change) { return change.isCleared(); });
    if (!names.empty())
        std::cerr << "owbctl: not named in the write, and cleared: " << names
                  << "\n        Some object managers replace the whole instance on a write and clear what it "
                     "does not carry.\n        To keep a value, name it in the same command.\n";
}

/** Writes with a limit for the whole wait. */
Write writeWaiting(const WriteRequest& request, const Trace* trace) {
    const Waiting waiting(request.group);
    return writeRow(request, trace);
}

} // namespace

int setRow(const WriteRequest& request, Format& format, const Trace* trace) {
    const Write write = writeWaiting(request, trace);
    format.writeWrite(write);
    if (!write.error.empty()) {
        report(write, write.error);
        return write.status == OWB_DONE ? exitFailed : exitStatus(write.status);
    }
    const bool isRejected = reportRejected(write.changes);
    const bool hasFailed = !write.failure.text.empty();
    if (hasFailed)
        report(write, "the write failed: " + write.failure.text);
    else if (isRejected && trace == nullptr)
        hintAtTrace();
    explainEmptyTexts(write.changes);
    warnAboutCleared(write.changes);
    return isRejected || hasFailed ? exitFailed : 0;
}

} // namespace owbctl
