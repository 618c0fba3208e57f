#include "agent/Sample.hpp"

#include "util/Number.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>

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

/** The values that identify a row, by nominator. */
using Identity = std::map<long, std::vector<std::string>>;

Identity identityOf(const Row& row) {
    Identity identity;
    for (const Property& property : row.properties) {
        if (property.attribute->isIdentifying)
            identity[property.attribute->nominator] = property.values;
    }
    return identity;
}

bool haveIdentities(const std::vector<Row>& rows) {
    std::set<Identity> identities;
    return std::all_of(rows.begin(), rows.end(), [&identities](const Row& row) {
        Identity identity = identityOf(row);
        return !identity.empty() && identities.insert(std::move(identity)).second;
    });
}

/** Finds the rows of a reading again in another one. */
class RowIndex {
public:
    RowIndex(const std::vector<Row>& rows, bool byNumber)
        : m_byNumber(byNumber) {
        for (const Row& row : rows)
            m_rows[keyOf(row)] = &row;
    }

    /** The row that is the same instance as `other`; null if there is none. */
    const Row* find(const Row& other) const {
        const auto found = m_rows.find(keyOf(other));
        return found == m_rows.end() ? nullptr : found->second;
    }

private:
    Identity keyOf(const Row& row) const { return m_byNumber ? Identity{{row.number, {}}} : identityOf(row); }

    bool m_byNumber;
    std::map<Identity, const Row*> m_rows;
};

void compareRows(Sample& sample, const Reading& now, const Reading& before) {
    const bool byNumber = !haveIdentities(now.group.rows) || !haveIdentities(before.group.rows);
    const RowIndex earlier(before.group.rows, byNumber);
    for (const Row& row : now.group.rows)
        sample.rows.push_back(compare(row, earlier.find(row), now.moment - before.moment));
    if (now.group.status != OWB_DONE)
        return;
    const RowIndex present(now.group.rows, byNumber);
    for (const Row& row : before.group.rows) {
        if (present.find(row) == nullptr)
            sample.vanished.push_back(row);
    }
}

} // namespace

Sample sampleOf(long number, std::chrono::system_clock::time_point time, const Reading& now,
                const Reading* before) {
    Sample sample{number, time, before == nullptr, now.group, {}};
    if (before != nullptr)
        compareRows(sample, now, *before);
    else
        std::transform(now.group.rows.begin(), now.group.rows.end(), std::back_inserter(sample.rows),
                       unchanged);
    return sample;
}

void keepChanges(Sample& sample) {
    const auto isChanged = [](const SampledProperty& sampled) { return sampled.isChanged; };
    const auto isUnchanged = [&isChanged](const SampledRow& row) {
        return std::none_of(row.properties.begin(), row.properties.end(), isChanged);
    };
    const auto isDropped = [](const SampledProperty& sampled) {
        return !sampled.isChanged && !sampled.property.attribute->isIdentifying;
    };
    sample.isReduced = true;
    sample.rows.erase(std::remove_if(sample.rows.begin(), sample.rows.end(), isUnchanged), sample.rows.end());
    for (SampledRow& row : sample.rows)
        row.properties.erase(std::remove_if(row.properties.begin(), row.properties.end(), isDropped),
                             row.properties.end());
}

std::optional<double> ratePerSecond(const std::string& before, const std::string& now, double seconds) {
    const auto first = util::decimal<std::uint64_t>(before);
    const auto second = util::decimal<std::uint64_t>(now);
    if (!first || !second || *second < *first || seconds <= 0)
        return std::nullopt;
    return static_cast<double>(*second - *first) / seconds;
}

} // namespace agent
