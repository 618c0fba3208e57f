#include "agent/Counter.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>

namespace owbctl {
namespace {

struct Address {
    long group;
    long nominator;
};

bool operator==(const Address& one, const Address& other) {
    return one.group == other.group && one.nominator == other.nominator;
}

// Groups of statistics: TCP, ports, ICMP, IP, UDP.
constexpr long groupsOfCounters[] = {6, 10, 11, 13, 14};
// What is no counter in them: CurrEstab, InstanceID, OutQLen.
constexpr Address gauges[] = {{6, 8}, {10, 26}, {10, 20}};
// Failures and errors that other groups count.
constexpr Address counters[] = {{3, 6}, {18, 6}, {21, 5}};

template <class List, class Value>
bool holds(const List& list, const Value& value) {
    return std::find(std::begin(list), std::end(list), value) != std::end(list);
}

std::optional<std::uint64_t> number(const std::string& text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

} // namespace

bool isCounter(const ExtItem& description) {
    const Address address{description.group, description.nom};
    return (holds(groupsOfCounters, address.group) && !holds(gauges, address)) || holds(counters, address);
}

std::optional<double> ratePerSecond(const std::string& before, const std::string& now, double seconds) {
    const auto first = number(before);
    const auto second = number(now);
    if (!first || !second || *second < *first || seconds <= 0)
        return std::nullopt;
    return static_cast<double>(*second - *first) / seconds;
}

} // namespace owbctl
