#ifndef SNMP_WRITE_SET_HPP
#define SNMP_WRITE_SET_HPP

#include "snmp/Snapshots.hpp"

namespace snmp {

/** A value that passed its test. */
struct TestedValue {
    /** Number of its variable, from 1. */
    std::size_t variable;
    std::size_t table;
    long group;
    Oid index;
    long nominator;
    std::string text;
    /** The value that the snapshot has. */
    std::string before;
};

/** Time after which a phase of a set is answered. The master waits for 1 s. */
constexpr std::chrono::milliseconds writeTime{800};

/** The write of tested values: one order for each row. */
std::unique_ptr<Write> makeWrite(boost::asio::io_context& io, std::weak_ptr<Snapshots> snapshots,
                                 const std::vector<TestedValue>& values);

} // namespace snmp
#endif
