#include "snmp/mapping/Reading.hpp"

#include "snmp/Fields.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace snmp {
namespace {

constexpr std::size_t groupCount = agent::highestGroup + 1;
constexpr std::size_t nominatorCount = 32; // more than any group has

using Attributes = std::array<std::array<const agent::Attribute*, nominatorCount>, groupCount>;

Attributes allAttributes() {
    Attributes all{};
    for (const agent::Attribute& attribute : agent::attributes)
        all.at(static_cast<std::size_t>(attribute.group)).at(static_cast<std::size_t>(attribute.nominator)) =
            &attribute;
    return all;
}

} // namespace

const agent::Attribute* attributeAt(long group, long nominator) {
    static const Attributes all = allAttributes();
    const auto row = static_cast<std::size_t>(group);
    const auto column = static_cast<std::size_t>(nominator);
    return row < groupCount && column < nominatorCount ? all[row][column] : nullptr;
}

std::optional<std::string_view> Instance::value(const agent::Attribute* attribute) const {
    const auto found =
        std::find_if(m_begin, m_end, [attribute](const Item& item) { return item.attribute == attribute; });
    return found == m_end ? std::nullopt : std::optional(found->text);
}

void appendItem(std::string& items, long row, long nominator, std::string_view text) {
    appendNumber(items, static_cast<std::uint32_t>(row));
    appendNumber(items, static_cast<std::uint32_t>(nominator));
    appendText(items, text);
}

Reading::Reading(long group, std::string items)
    : m_group(group)
    , m_bytes(std::make_unique<const std::string>(std::move(items))) {
    std::vector<std::pair<long, std::size_t>> ends; // row, and the end of its items
    for (FieldReader reader(*m_bytes); !reader.isAtEnd();) {
        const auto row = static_cast<long>(reader.number());
        const agent::Attribute* const attribute = attributeAt(group, static_cast<long>(reader.number()));
        const std::string_view text = reader.text();
        if (attribute == nullptr)
            continue;
        m_items.push_back({attribute, text});
        if (ends.empty() || ends.back().first != row)
            ends.emplace_back(row, 0);
        ends.back().second = m_items.size();
    }
    m_items.shrink_to_fit();
    const Item* begin = m_items.data();
    for (const auto& [row, end] : ends) {
        m_instances.emplace_back(row, begin, m_items.data() + end);
        begin = m_items.data() + end;
    }
}

} // namespace snmp
