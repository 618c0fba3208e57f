// Which rows a table has: records, their joins, filters and indexes.
#include "snmp/mapping/Mapping.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <arpa/inet.h>
#include <map>
#include <string>
#include <string_view>

namespace snmp {
namespace {

std::string_view textOf(const Instance& instance, const agent::Attribute* attribute) {
    return instance.value(attribute).value_or("");
}

const Reading* readingOf(const Readings& readings, long group) {
    const auto found = std::find_if(readings.begin(), readings.end(),
                                    [group](const Reading& reading) { return reading.group() == group; });
    return found == readings.end() ? nullptr : &*found;
}

/** The value of a key in an object path: Class.Key="value",Other="value". A backslash precedes a quote or a
 * backslash within a value. Empty if the path does not have the key. */
std::string keyIn(std::string_view path, const std::string& name) {
    const std::string start = name + "=\"";
    std::size_t at = path.find(start);
    while (at != std::string_view::npos && at > 0 && path[at - 1] != '.' && path[at - 1] != ',')
        at = path.find(start, at + 1);
    std::string value;
    for (at = std::min(at, path.size()) + start.size(); at < path.size() && path[at] != '"'; ++at) {
        if (path[at] == '\\' && at + 1 < path.size())
            ++at;
        value += path[at];
    }
    return value;
}

/** The instances of a join by the text in the record's group that leads to them. */
using Joined = std::map<std::string, const Instance*, std::less<>>;

Joined joinedBy(const JoinRule& join, const Readings& readings) {
    Joined others;
    const Reading* const other = readingOf(readings, join.group);
    if (other == nullptr)
        return others;
    const agent::Attribute* const name = attributeAt(join.group, join.other);
    for (const Instance& instance : other->instances())
        others.emplace(textOf(instance, name), &instance);
    if (join.association < 0)
        return others;
    Joined related;
    const Reading* const association = readingOf(readings, join.association);
    if (association == nullptr)
        return related;
    for (const Instance& pair : association->instances()) {
        const auto end = others.find(keyIn(textOf(pair, attributeAt(join.association, 0)), join.otherKey));
        if (end != others.end())
            related.emplace(keyIn(textOf(pair, attributeAt(join.association, 1)), join.ownKey), end->second);
    }
    return related;
}

bool isKept(const TableRule& rule, long group, const Instance& instance) {
    return std::all_of(rule.filters.begin(), rule.filters.end(), [&](const FilterRule& filter) {
        return (instance.value(attributeAt(group, filter.nominator)) == filter.value) == filter.keepsEqual;
    });
}

void addRecords(std::vector<Record>& records, const TableRule& rule, const Reading& reading,
                const Readings& readings) {
    Joined joined;
    const agent::Attribute* joinedText = nullptr;
    if (rule.join) {
        joined = joinedBy(*rule.join, readings);
        joinedText = attributeAt(reading.group(), rule.join->own);
    }
    for (const Instance& instance : reading.instances()) {
        if (!isKept(rule, reading.group(), instance))
            continue;
        const auto found = joinedText == nullptr ? joined.end() : joined.find(textOf(instance, joinedText));
        records.push_back(
            {reading.group(), &instance, found == joined.end() ? nullptr : found->second, 0, 0});
    }
}

std::optional<std::string_view> namingText(const TableRule& rule, const Record& record, std::size_t i) {
    return record.base->value(attributeAt(record.group, rule.index.nominators[i]));
}

bool appendNumber(Oid& index, std::optional<std::string_view> text) {
    const auto number = text ? util::number<std::uint32_t>(*text) : std::nullopt;
    if (number)
        index.push_back(*number);
    return number.has_value();
}

void appendBytes(Oid& index, const unsigned char* bytes, std::size_t size) {
    index.insert(index.end(), bytes, bytes + size);
}

bool appendIpAddress(Oid& index, const std::string& text) {
    in_addr address{};
    if (::inet_pton(AF_INET, text.c_str(), &address) != 1)
        return false;
    appendBytes(index, reinterpret_cast<const unsigned char*>(&address), sizeof address);
    return true;
}

/** InetAddressType and InetAddress, with its length. */
bool appendInetAddress(Oid& index, const std::string& text) {
    Oid ipv4{1, sizeof(in_addr)};
    if (appendIpAddress(ipv4, text)) {
        index.insert(index.end(), ipv4.begin(), ipv4.end());
        return true;
    }
    in6_addr address{};
    if (::inet_pton(AF_INET6, text.c_str(), &address) != 1)
        return false;
    index.insert(index.end(), {2, sizeof address});
    appendBytes(index, address.s6_addr, sizeof address);
    return true;
}

bool appendName(Oid& index, const TableRule& rule, const Record& record, std::size_t i) {
    const auto text = namingText(rule, record, i);
    const bool isAddress = i % 2 == 0;
    if (rule.index.kind == IndexRule::Kind::integers || !isAddress)
        return appendNumber(index, text);
    const std::string address(text.value_or(""));
    return rule.index.kind == IndexRule::Kind::ipAddresses ? appendIpAddress(index, address)
                                                           : appendInetAddress(index, address);
}

} // namespace

std::vector<Record> recordsOf(const TableRule& rule, const Readings& readings) {
    std::vector<Record> records;
    for (const long group : rule.groups) {
        if (const Reading* const reading = readingOf(readings, group))
            addRecords(records, rule, *reading, readings);
    }
    if (rule.index.kind == IndexRule::Kind::ordinal)
        std::stable_sort(records.begin(), records.end(), [&rule](const Record& left, const Record& right) {
            return namingText(rule, left, 0) < namingText(rule, right, 0);
        });
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].ordinal = i + 1;
        records[i].count = records.size();
    }
    return records;
}

std::optional<Oid> indexOf(const TableRule& rule, const Record& record) {
    switch (rule.index.kind) {
    case IndexRule::Kind::zero:
        return Oid{0};
    case IndexRule::Kind::one:
        return Oid{1};
    case IndexRule::Kind::ordinal:
        return Oid{static_cast<std::uint32_t>(record.ordinal)};
    default:
        break;
    }
    Oid index;
    for (std::size_t i = 0; i < rule.index.nominators.size(); ++i) {
        if (!appendName(index, rule, record, i))
            return std::nullopt;
    }
    return index;
}

} // namespace snmp
