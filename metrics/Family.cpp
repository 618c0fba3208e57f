#include "metrics/Family.hpp"

#include "util/Utf8.hpp"

#include <algorithm>
#include <utility>

namespace metrics {

void addLabel(Labels& labels, const std::string& name, const std::string& value) {
    if (!value.empty())
        labels.push_back({name, utf8::valid(value)});
}

bool addSample(Family& family, Sample sample) {
    const auto isSame = [&sample](const Sample& other) {
        return std::equal(
            sample.labels.begin(), sample.labels.end(), other.labels.begin(), other.labels.end(),
            [](const Label& a, const Label& b) { return a.name == b.name && a.value == b.value; });
    };
    if (std::any_of(family.samples.begin(), family.samples.end(), isSame))
        return false;
    family.samples.push_back(std::move(sample));
    return true;
}

} // namespace metrics
