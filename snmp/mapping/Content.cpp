#include "snmp/mapping/Content.hpp"

#include "snmp/mapping/Date.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <limits>
#include <owb.h>

namespace snmp {
namespace {

using Text = std::optional<std::string>;

constexpr std::uint64_t highestNumber = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t highestInteger = std::numeric_limits<std::int32_t>::max();

std::optional<std::string_view> textAt(const Inputs& in, std::size_t source) {
    return source < in.sources.size() ? in.record.value(in.sources[source]) : std::nullopt;
}

std::optional<std::uint64_t> numberAt(const Inputs& in, std::size_t source) {
    const auto text = textAt(in, source);
    return text ? util::number<std::uint64_t>(*text) : std::nullopt;
}

/** Calls a function with each value of the sources until it returns true. */
template <class Visit>
void visitValues(const Inputs& in, Visit visit) {
    for (const agent::Attribute* const source : in.sources) {
        for (const Instance* const instance : {in.record.base, in.record.joined}) {
            if (instance == nullptr)
                continue;
            for (const Item& item : *instance) {
                if (item.attribute == source && visit(item.text))
                    return;
            }
        }
    }
}

struct Storage {
    std::uint64_t unit;
    std::uint64_t size;
    std::uint64_t used;
};

/** Doubles the unit until the other numbers fit. An unknown use does not keep the size from being known. */
std::optional<Storage> scaledStorage(const Inputs& in) {
    const auto unit = numberAt(in, 0);
    const auto size = numberAt(in, 1);
    if (!unit || !size)
        return std::nullopt;
    Storage storage{*unit, *size, numberAt(in, 2).value_or(0)};
    while (std::max(storage.size, storage.used) > highestInteger) {
        storage.unit *= 2;
        storage.size /= 2;
        storage.used /= 2;
    }
    return storage;
}

Text textOf(std::optional<std::uint64_t> number) {
    return number ? Text(std::to_string(*number)) : std::nullopt;
}

} // namespace

Text firstValue(const Inputs& in) {
    for (const agent::Attribute* const source : in.sources) {
        if (const auto text = in.record.value(source))
            return std::string(*text);
    }
    return std::nullopt;
}

Text joinedValues(const Inputs& in) {
    Text all;
    visitValues(in, [&all](std::string_view text) {
        all = all ? *all + ' ' : std::string();
        all->append(text);
        return false;
    });
    return all;
}

Text translated(const Inputs& in) {
    Text result;
    visitValues(in, [&in, &result](std::string_view text) {
        const auto code = std::find_if(in.codes.begin(), in.codes.end(),
                                       [text](const Code& candidate) { return candidate.from == text; });
        result = code == in.codes.end() ? "" : code->to;
        return code != in.codes.end();
    });
    return result;
}

Text sum(const Inputs& in) {
    std::uint64_t total = 0;
    for (std::size_t source = 0; source < in.sources.size(); ++source) {
        const auto number = numberAt(in, source);
        if (!number)
            return std::nullopt;
        total += std::min(*number, highestNumber - total);
    }
    return std::to_string(total);
}

Text megabits(const Inputs& in) {
    constexpr std::uint64_t megabit = 1000000;
    const auto speed = numberAt(in, 0);
    return speed ? Text(std::to_string(*speed / megabit + (*speed % megabit >= megabit / 2 ? 1 : 0)))
                 : std::nullopt;
}

Text hundredthsOfInterval(const Inputs& in) {
    constexpr std::uint64_t longestDays = 248; // of 31 bits
    const auto interval = textAt(in, 0);
    const auto days = interval ? util::decimal<std::uint64_t>(interval->substr(0, 8)) : std::nullopt;
    if (!days)
        return std::nullopt;
    // The library returns the lowest 32 bits.
    const long hundredths = OWB_calcTimeInterval(std::string(*interval).data(), OWB_TIME_HUNDREDTHS);
    if (*days > longestDays || hundredths < 0)
        return std::to_string(highestInteger);
    return std::to_string(hundredths);
}

Text hundredthsBetween(const Inputs& in) {
    const auto begin = hundredthsOf(textAt(in, 0).value_or(""));
    const auto end = hundredthsOf(textAt(in, 1).value_or(""));
    return begin && end && *begin <= *end ? Text(std::to_string(*end - *begin)) : std::nullopt;
}

Text timeStamp(const Inputs& in) {
    const auto date = hundredthsOf(textAt(in, 0).value_or(""));
    if (!date)
        return std::nullopt;
    const std::int64_t age = std::max<std::int64_t>(in.context.now - *date, 0);
    return std::to_string(age > in.context.upTime ? 0 : in.context.upTime - age);
}

Text alias(const Inputs& in) {
    const auto description = textAt(in, 0);
    return description && description != textAt(in, 1) ? std::string(*description) : std::string();
}

Text physicalClass(const Inputs& in) {
    return in.record.group == in.sources.front()->group ? firstValue(in) : Text("3");
}

Text storageUnit(const Inputs& in) {
    const auto storage = scaledStorage(in);
    return storage ? textOf(storage->unit) : textOf(numberAt(in, 0));
}

Text storageSize(const Inputs& in) {
    const auto storage = scaledStorage(in);
    return storage ? textOf(storage->size) : std::nullopt;
}

Text storageUsed(const Inputs& in) {
    const auto storage = scaledStorage(in);
    return storage && numberAt(in, 2) ? textOf(storage->used) : std::nullopt;
}

Text kilobytes(const Inputs& in) {
    constexpr std::uint64_t kilobyte = 1024;
    const auto unit = numberAt(in, 0);
    const auto count = numberAt(in, 1);
    if (!unit || !count)
        return std::nullopt;
    std::uint64_t bytes = 0;
    return std::to_string((__builtin_mul_overflow(*unit, *count, &bytes) ? highestNumber : bytes) / kilobyte);
}

Text ordinal(const Inputs& in) {
    return std::to_string(in.record.ordinal);
}

Text rowCount(const Inputs& in) {
    return std::to_string(in.record.count);
}

Text lastChange(const Inputs& in) {
    return std::to_string(in.context.lastChange);
}

Text lastUpdate(const Inputs& in) {
    return std::to_string(in.context.upTime);
}

} // namespace snmp
