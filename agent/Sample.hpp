#ifndef AGENT_SAMPLE_HPP
#define AGENT_SAMPLE_HPP

#include "agent/Group.hpp"

#include <ctime>
#include <optional>
#include <vector>

namespace owbctl {

/** A property in a row of a sample, beside what it was in the reading before. */
struct Sampled {
    Property property;
    /** Whether the reading before had other values, or none. False in the first one. */
    bool isChanged;
    /** Of a counter whose growth is known. */
    std::optional<double> perSecond;
};

/** One instance in a sample. Rows are compared by their number. */
struct SampledRow {
    long number;
    std::vector<Sampled> properties;
};

/** One of several readings of a group. */
struct Sample {
    /** From 1. */
    long number;
    std::time_t time;
    /** Whether there was nothing to compare it with. */
    bool isFirst;
    Group group;
    /** The rows of the group. */
    std::vector<SampledRow> rows;
};

/** A reading that was made at a moment of a steady clock, in seconds. */
struct Reading {
    Group group;
    double moment;
};

/** The rows of `now` beside those of `before`; null when there is nothing to compare with. */
std::vector<SampledRow> compare(const Reading& now, const Reading* before);

} // namespace owbctl
#endif
