#ifndef SNMP_TREE_WALKS_HPP
#define SNMP_TREE_WALKS_HPP

#include "snmp/tree/Snapshot.hpp"

#include <vector>

namespace snmp {

/**
 * The last answers of walks, and the snapshots that they came from: a walk goes on where its last answer came
 * from, so that all columns of a table have the same rows. Remembers a bounded number of answers for a
 * bounded time; a walk whose answer is forgotten goes on in the current snapshot.
 */
class Walks {
public:
    static constexpr std::size_t capacity = 1024;
    static constexpr std::chrono::seconds memory{10};

    void remember(const Oid& answer, SnapshotPointer snapshot, Clock::time_point now);
    /** The snapshot that an answer came from; null if it is forgotten. */
    SnapshotPointer find(const Oid& answer, Clock::time_point now) const;
    /** Drops answers that are too old. Returns whether any are left. */
    bool forget(Clock::time_point now);

private:
    struct Answer {
        Oid oid;
        SnapshotPointer snapshot;
        Clock::time_point time;
    };

    // An answer replaces any other that has the same slot.
    std::vector<Answer> m_answers{capacity};
};

} // namespace snmp
#endif
