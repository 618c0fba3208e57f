#include "formats/Value.hpp"

#include "formats/Table.hpp"
#include "output/Text.hpp"
#include "util/Ascii.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

namespace owbctl {

using namespace agent;

namespace {

constexpr std::string_view bytes = "Bytes";
constexpr std::string_view kilobytes = "KiloBytes";
constexpr std::string_view blocks = "Blocks";
constexpr std::string_view bitsPerSecond = "Bits per Second";

/** Values below this have few digits: they remain exact. */
constexpr double leastScaled = 10000;

/** A unit of DSP0004 as people write it. Units that are not here count what the name of the attribute says,
 * such as packets. */
struct UnitName {
    std::string_view unit;
    const char* written;
};
constexpr UnitName unitNames[] = {
    {bytes, "B"},           {kilobytes, "kB"}, {blocks, "blocks"}, {bitsPerSecond, "bit/s"},
    {"MilliSeconds", "ms"}, {"Seconds", "s"},  {"Hops", "hops"},
};

bool isScalable(std::string_view unit) {
    return unit == bytes || unit == kilobytes || unit == blocks || unit == bitsPerSecond;
}

/** @param prefixes of the units, from the one of 1 @param step between two units */
std::string scaled(double value, const char* const (&units)[5], double step) {
    std::size_t unit = 0;
    if (value >= leastScaled) {
        for (; value >= step && unit + 1 < std::size(units); ++unit)
            value /= step;
    }
    char number[32];
    std::snprintf(number, sizeof number, value < 10 ? "%.1f" : "%.0f", value);
    std::string text = number;
    if (text.size() > 2 && text.compare(text.size() - 2, 2, ".0") == 0)
        text.resize(text.size() - 2);
    return text + " " + units[unit];
}

std::string readableSpeed(double bits) {
    return scaled(bits, {"bit/s", "kbit/s", "Mbit/s", "Gbit/s", "Tbit/s"}, 1000);
}

std::optional<double> numberOf(const std::string& text) {
    const auto number = util::decimal<std::uint64_t>(text);
    return number ? std::optional<double>(static_cast<double>(*number)) : std::nullopt;
}

/** The size of a block in a row of sizes in blocks. */
std::optional<double> blockSize(const Row& row) {
    for (const Property& property : row.properties) {
        if (property.attribute->property == std::string_view("Blocksize"))
            return numberOf(property.values.front());
    }
    return std::nullopt;
}

/** A value of a scalable unit with its unit. */
std::string readableAmount(const std::string& value, const Attribute& attribute, const Row& row) {
    const std::string_view unit = attribute.unit;
    const std::optional<double> number = numberOf(value);
    if (number && unit == bitsPerSecond)
        return readableSpeed(*number);
    if (number && unit == bytes)
        return readableBytes(*number);
    if (number && unit == kilobytes)
        return readableBytes(*number * 1024);
    if (const std::optional<double> size = blockSize(row); number && size)
        return readableBytes(*number * *size);
    return printable(value) + " " + unitOf(attribute);
}

/** A text as it is, or in quotes where it could be taken for no value, or for a text in quotes. */
std::string distinct(const std::string& text) {
    const bool hasQuotes = text.size() > 1 && text.front() == '"' && text.back() == '"';
    const bool isMistakable = text.empty() || text == Table::absent || hasQuotes;
    return isMistakable ? '"' + printable(text) + '"' : printable(text);
}

std::string readable(const std::string& value, const Attribute& attribute, const Row& row, bool isHuman) {
    if (const char* const name = attribute.values.find(value))
        return std::string(name) + " (" + value + ")";
    if (attribute.kind == Kind::date)
        return printable(readableDate(value));
    if (attribute.kind == Kind::interval)
        return printable(readableInterval(value));
    if (isHuman && isScalable(attribute.unit))
        return readableAmount(value, attribute, row);
    return distinct(value);
}

bool isDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), ascii::isDigit);
}

} // namespace

std::string cell(const std::vector<std::string>& values) {
    if (values.empty())
        return Table::absent;
    std::string text;
    for (const std::string& value : values)
        text += (&value == &values.front() ? "" : ", ") + distinct(value);
    return text;
}

std::string unitOf(const Attribute& attribute) {
    const auto found =
        std::find_if(std::begin(unitNames), std::end(unitNames),
                     [&attribute](const UnitName& each) { return each.unit == attribute.unit; });
    return found == std::end(unitNames) ? "" : found->written;
}

std::string heading(const Attribute& attribute, const Style& style) {
    const std::string unit = unitOf(attribute);
    const bool isInCells = style.isHuman && !style.isRaw && isScalable(attribute.unit);
    return attribute.property + (unit.empty() || isInCells ? "" : " (" + unit + ")");
}

std::string valueText(const Property& property, const Row& row, const Style& style) {
    std::string text;
    for (const std::string& value : property.values) {
        text += &value == &property.values.front() ? "" : ", ";
        text += style.isRaw ? printable(value) : readable(value, *property.attribute, row, style.isHuman);
    }
    return text;
}

// yyyymmddhhmmss.mmmmmmsutc: s is a sign, utc the offset in minutes.
std::string readableDate(const std::string& date) {
    constexpr std::size_t length = 25;
    const std::string_view text = date;
    if (text.size() != length || !isDigits(text.substr(0, 14)) || (text[21] != '+' && text[21] != '-'))
        return date;
    const auto offset = util::decimal<int>(text.substr(22));
    if (!offset)
        return date;
    char zone[16];
    std::snprintf(zone, sizeof zone, " %c%02d%02d", text[21], *offset / 60, *offset % 60);
    return date.substr(0, 4) + "-" + date.substr(4, 2) + "-" + date.substr(6, 2) + " " + date.substr(8, 2) +
           ":" + date.substr(10, 2) + ":" + date.substr(12, 2) + zone;
}

// ddddddddhhmmss.mmmmmm:000
std::string readableInterval(const std::string& interval) {
    constexpr std::size_t length = 25;
    const std::string_view text = interval;
    if (text.size() != length || !isDigits(text.substr(0, 14)) || !isDigits(text.substr(15, 6)) ||
        text[21] != ':')
        return interval;
    const std::string time = interval.substr(8, 2) + ":" + interval.substr(10, 2) + ":" +
                             interval.substr(12, 2) + "." + interval.substr(15, 2);
    const std::size_t days = interval.find_first_not_of('0');
    return days < 8 ? interval.substr(days, 8 - days) + "-" + time : time;
}

std::string readableBytes(double bytes) {
    return scaled(bytes, {"B", "KiB", "MiB", "GiB", "TiB"}, 1024);
}

} // namespace owbctl
