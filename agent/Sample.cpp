#include "agent/Sample.hpp"

#include "util/Number.hpp"

#include <cstdint>

namespace agent {
namespace {

SampledProperty compare(const Property& now, const Property* before, double seconds) {
    SampledProperty sampled{now, before == nullptr || before->values != now.values, std::nullopt};
    if (before != nullptr && now.attribute->kind == Kind::counter)
        sampled.perSecond = ratePerSecond(before->values.front(), now.values.front(), seconds);
    return sampled;
}

SampledRow compare(const Row& now, const Row* before, double seconds) {
    SampledRow row{now.number, {}};
    for (const Property& property : now.properties)
        row.properties.push_back(
            compare(property, before == nullptr ? nullptr : before->find(property.attribute), seconds));
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

std::optional<double> ratePerSecond(const std::string& before, const std::string& now, double seconds) {
    const auto first = util::decimal<std::uint64_t>(before);
    const auto second = util::decimal<std::uint64_t>(now);
    if (!first || !second || *second < *first || seconds <= 0)
        return std::nullopt;
    return static_cast<double>(*second - *first) / seconds;
}

} // namespace agent
