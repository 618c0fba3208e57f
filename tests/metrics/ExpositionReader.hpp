#ifndef TESTS_METRICS_EXPOSITION_READER_HPP
#define TESTS_METRICS_EXPOSITION_READER_HPP
#include "metrics/Exposition.hpp"

#include <map>
#include <string>
#include <vector>

/** Reads the texts that Prometheus scrapes. It shares no code with what writes them. */
namespace exposition {

struct Sample {
    std::string name;
    std::map<std::string, std::string> labels;
    std::string value;
};

/** A text, and every rule of its format and of `promtool check metrics` that it breaks. */
struct Text {
    std::vector<Sample> samples;
    /** By the name in the line TYPE. */
    std::map<std::string, std::string> types;
    std::map<std::string, std::string> helps;
    std::map<std::string, std::string> units;
    std::vector<std::string> faults;

    /** The value of a sample that has these labels, among others; "(none)" if there is none, "(several)" if
     * there are several. */
    std::string value(const std::string& name, const std::map<std::string, std::string>& labels = {}) const;
    std::size_t count(const std::string& name) const;
};

Text read(const std::string& text, metrics::Format format);

} // namespace exposition
#endif
