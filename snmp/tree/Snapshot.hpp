#ifndef SNMP_TREE_SNAPSHOT_HPP
#define SNMP_TREE_SNAPSHOT_HPP

#include "snmp/tree/Table.hpp"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>

namespace snmp {

using Clock = std::chrono::steady_clock;

/** The tables of a subject as they were at one time. Never changes. */
struct Snapshot {
    std::size_t subject = 0;
    Clock::time_point time;
    /** By number of the table. */
    std::map<std::size_t, Table> tables;
    /** Identifies the values that it was made of. */
    std::uint64_t fingerprint = 0;
    /** The master's sysUpTime when they last changed. */
    std::uint32_t lastChange = 0;

    /** Null if the table is one of another subject. */
    const Table* table(std::size_t number) const {
        const auto found = tables.find(number);
        return found == tables.end() ? nullptr : &found->second;
    }
};

using SnapshotPointer = std::shared_ptr<const Snapshot>;

} // namespace snmp
#endif
