#ifndef METRICS_FAMILY_HPP
#define METRICS_FAMILY_HPP

#include <string>
#include <vector>

/** Metrics in the terms of Prometheus: families of samples that differ by their labels. */
namespace metrics {

enum class Type {
    /** Only grows, until it restarts from 0. The names of its samples end in "_total". */
    counter,
    gauge,
    /** Labels with the value 1. The names of its samples end in "_info". */
    info
};

struct Label {
    /** ASCII letters, digits and underscores. */
    std::string name;
    /** Valid UTF-8, not empty: an empty label is the same as none. */
    std::string value;
};

using Labels = std::vector<Label>;

struct Sample {
    Labels labels;
    /** A decimal number. */
    std::string value;
};

/** Samples of one name. No two of them have the same labels. */
struct Family {
    /** Without the suffix of its type. Ends in the unit. */
    std::string name;
    Type type;
    /** Base unit, as "bytes"; empty for none. */
    std::string unit;
    /** One sentence for people. */
    std::string help;
    std::vector<Sample> samples;
};

} // namespace metrics
#endif
