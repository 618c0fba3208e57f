#include "agent/Sample.hpp"

#include "agent/Counter.hpp"

namespace owbctl {
namespace {

Sampled compare(const Property& now, const Property* before, double seconds) {
    Sampled sampled{now, before == nullptr || before->values != now.values, std::nullopt};
    if (before != nullptr && isCounter(*now.description))
        sampled.perSecond = ratePerSecond(before->values.front(), now.values.front(), seconds);
    return sampled;
}

SampledRow compare(const Row& now, const Row* before, double seconds) {
    SampledRow row{now.number, {}};
    for (const Property& property : now.properties)
        row.properties.push_back(
            compare(property, before == nullptr ? nullptr : before->find(property.description), seconds));
    return row;
}

SampledRow unchanged(const Row& now) {
    SampledRow row{now.number, {}};
    for (const Property& property : now.properties)
        row.properties.push_back({property, false, std::nullopt});
    return row;
}

} // namespace

std::vector<SampledRow> compare(const Reading& now, const Reading* before) {
    std::vector<SampledRow> rows;
    for (const Row& row : now.group.rows) {
        if (before == nullptr)
            rows.push_back(unchanged(row));
        else
            rows.push_back(compare(row, before->group.find(row.number), now.moment - before->moment));
    }
    return rows;
}

} // namespace owbctl
