#ifndef AGENT_SAMPLE_HPP
#define AGENT_SAMPLE_HPP

#include "agent/Group.hpp"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

/** Compares successive readings of a group: changed values, and the rates of counters. */
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

/** One row of a sample. Rows are compared by their number. */
struct SampledRow {
    long number;
    std::vector<SampledProperty> properties;
};

/** One of several readings of a group. */
struct Sample {
    /** From 1. */
    long number;
    std::time_t time;
    /** Whether there is no previous reading. */
    bool isFirst;
    Group group;
    /** The rows of the group. */
    std::vector<SampledRow> rows;
};

/** Compares the rows of `now` with those of `before`; null if there is no previous reading. */
std::vector<SampledRow> compare(const Reading& now, const Reading* before);

/**
 * Growth of a counter in one second, between two values in decimal that were read `seconds` apart. Nothing if
 * a value is no number of 64 bits, if the counter restarted, or if no time has passed.
 */
std::optional<double> ratePerSecond(const std::string& before, const std::string& now, double seconds);

} // namespace agent
#endif
