#include "snmp/tree/Walks.hpp"

#include <utility>

namespace snmp {
namespace {

/** FNV-1a over the sub-identifiers. */
std::size_t slotOf(const Oid& oid) {
    std::uint32_t hash = 2166136261U;
    for (const std::uint32_t id : oid)
        hash = (hash ^ id) * 16777619U;
    return (hash ^ hash >> 16) % Walks::capacity;
}

} // namespace

void Walks::remember(const Oid& answer, SnapshotPointer snapshot, Clock::time_point now) {
    m_answers[slotOf(answer)] = {answer, std::move(snapshot), now};
}

SnapshotPointer Walks::find(const Oid& answer, Clock::time_point now) const {
    const Answer& candidate = m_answers[slotOf(answer)];
    return candidate.snapshot && now - candidate.time <= memory && candidate.oid == answer
               ? candidate.snapshot
               : nullptr;
}

bool Walks::forget(Clock::time_point now) {
    bool isAnyLeft = false;
    for (Answer& answer : m_answers) {
        if (answer.snapshot && now - answer.time > memory)
            answer = Answer();
        isAnyLeft = isAnyLeft || answer.snapshot;
    }
    return isAnyLeft;
}

} // namespace snmp
