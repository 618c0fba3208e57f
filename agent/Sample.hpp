#ifndef AGENT_SAMPLE_HPP
#define AGENT_SAMPLE_HPP

#include "agent/Group.hpp"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

/** Compares successive readings of a group: changed values, the rates of counters, and rows that vanished. */
namespace agent {

/** A reading of a group, and when it was made: seconds of a steady clock. */
struct Reading {
    Group group;
    double moment;
};

/** A property of a sample, compared with the previous reading. */
struct SampledProperty {
    Property property;
    /** Whether the previous reading had other values or none. False in the first sample. */
    bool isChanged;
    /** Growth of a counter in one second; nothing for other kinds and where it is unknown. */
    std::optional<double> perSecond;
};

/** One row of a sample. */
struct SampledRow {
    long number;
    std::vector<SampledProperty> properties;
};

/** One of several readings of a group. */
struct Sample {
    /** From 1. */
    long number;
    std::chrono::system_clock::time_point time;
    /** Whether there is no previous reading. */
    bool isFirst;
    Group group;
    /** The rows of the group; after keepChanges() only some of them. */
    std::vector<SampledRow> rows;
    /** Rows of the previous reading that the group does not have any more, as they were there. */
    std::vector<Row> vanished = {};
    /** Whether keepChanges() was applied. */
    bool isReduced = false;
};

/**
 * Compares a reading with the previous one; null if there is none. Rows are compared by the attributes that
 * identify them, so that a row that vanishes does not shift the others. They are compared by their number if
 * the group has no such attribute, or if two rows of a reading have the same values. A reading that failed
 * has no vanished rows.
 */
Sample sampleOf(long number, std::chrono::system_clock::time_point time, const Reading& now,
                const Reading* before);

/** Removes the rows and values that did not change from the rows of a sample; all of the first sample. What
 * identifies a row stays in rows that changed. */
void keepChanges(Sample& sample);

/**
 * Growth of a counter in one second, between two values in decimal that were read `seconds` apart. Nothing if
 * a value is no number of 64 bits, if the counter restarted, or if no time has passed.
 */
std::optional<double> ratePerSecond(const std::string& before, const std::string& now, double seconds);

} // namespace agent
#endif
