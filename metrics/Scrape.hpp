#ifndef METRICS_SCRAPE_HPP
#define METRICS_SCRAPE_HPP

#include "agent/Reason.hpp"
#include "metrics/Family.hpp"
#include "metrics/GroupFamilies.hpp"

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

/** The readings of groups, and the metrics about them. */
namespace metrics {

/** How the reading of a group went. */
struct Reading {
    long group;
    /** Of the library; OWB_DONE if the group was read. */
    long status;
    std::chrono::microseconds duration;
    /** See GroupFamilies. */
    std::size_t droppedRows;
};

/** Metrics of a group, and how its reading went. */
struct Measured {
    Reading reading;
    std::vector<Family> families;
    /** Why the group was not read. */
    agent::Failure failure = {};
};

/** Reads a group that has metrics, see measuredGroups(). Blocks; for the thread that calls the library. */
Measured measure(long group);

/** Readings of several groups. */
struct Scrape {
    /** The groups to read. */
    std::vector<long> groups;
    /** Of those that were read in time, each at most once. */
    std::vector<Reading> readings;
    /** When the first reading began. */
    std::chrono::system_clock::time_point begin;
    /** From then to the last reading. */
    std::chrono::microseconds duration;
    /** From then to the moment for which the text is made; nothing if the text is for a later moment. */
    std::optional<std::chrono::microseconds> age;
};

/** The metrics about a scrape. Their names begin with owb_group_, owb_scrape_ and owb_build_. */
std::vector<Family> familiesOf(const Scrape& scrape);

} // namespace metrics
#endif
