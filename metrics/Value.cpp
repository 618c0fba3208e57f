#include "metrics/Value.hpp"

#include "metrics/Decimal.hpp"
#include "metrics/Naming.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace metrics {

using agent::Attribute;
using agent::Kind;
using agent::Property;
using agent::Row;

namespace {

/** A unit of the catalogue in base units: a number times `factor`, divided by 10^places. */
struct Unit {
    const char* name;
    const char* base;
    const char* factor;
    std::size_t places;
};

// A number of Blocks is multiplied by the size of the block instead.
constexpr Unit units[] = {
    {"Bytes", "bytes", "1", 0},     {"KiloBytes", "bytes", "1024", 0},
    {"Blocks", "bytes", "1", 0},    {"Bits per Second", "bytes_per_second", "125", 3},
    {"Seconds", "seconds", "1", 0}, {"MilliSeconds", "seconds", "1", 3},
};

constexpr Unit noUnit = {"", "", "1", 0};

const Unit& unitNamed(const char* name) {
    const auto* const found = std::find_if(std::begin(units), std::end(units), [name](const Unit& each) {
        return std::strcmp(each.name, name) == 0;
    });
    return found == std::end(units) ? noUnit : *found;
}

std::optional<std::string> flagOf(const std::string& text) {
    if (ascii::equalsIgnoreCase(text, "true"))
        return "1";
    return ascii::equalsIgnoreCase(text, "false") ? std::optional<std::string>("0") : std::nullopt;
}

/** The first text of a property: an attribute that other object managers serve as an array has one value
 * here.
 */
std::optional<std::string> firstText(const Row& row, const Attribute& attribute) {
    const Property* const property = row.find(&attribute);
    return property == nullptr ? std::nullopt : std::optional(property->values.front());
}

/** A number in the unit of the catalogue; of intervals in microseconds. */
std::optional<std::string> numberIn(const Row& row, const Attribute& attribute) {
    const std::optional<std::string> text = firstText(row, attribute);
    if (!text)
        return std::nullopt;
    switch (attribute.kind) {
    case Kind::date:
        return timestampOf(*text);
    case Kind::interval:
        return microsecondsOf(*text);
    case Kind::flag:
        return flagOf(*text);
    case Kind::gauge:
        return integerOf(*text);
    default:
        return digitsOf(*text);
    }
}

std::optional<std::string> blockSizeIn(const Row& row, const Attribute& attribute) {
    const Attribute* const size = agent::findAttribute(attribute.group, "Blocksize");
    return size == nullptr ? std::nullopt : numberIn(row, *size);
}

std::string scaled(const std::string& number, const std::string& factor, std::size_t places) {
    const bool isNegative = number.front() == '-';
    const std::string digits = productOf(isNegative ? number.substr(1) : number, factor);
    return withPoint((isNegative ? "-" : "") + digits, places);
}

bool isLater(const std::string& date, const std::string& other) {
    return std::strtod(date.c_str(), nullptr) > std::strtod(other.c_str(), nullptr);
}

} // namespace

std::string unitOf(const Attribute& attribute) {
    const bool isTime = attribute.kind == Kind::date || attribute.kind == Kind::interval;
    return isTime ? "seconds" : unitNamed(attribute.unit).base;
}

std::optional<std::string> valueIn(const Row& row, const Attribute& attribute) {
    const std::optional<std::string> number = numberIn(row, attribute);
    if (!number || attribute.kind == Kind::date)
        return number;
    if (attribute.kind == Kind::interval)
        return withPoint(*number, 6);
    if (std::strcmp(attribute.unit, "Blocks") == 0) {
        const std::optional<std::string> blockSize = blockSizeIn(row, attribute);
        return blockSize ? std::optional(productOf(*number, *blockSize)) : std::nullopt;
    }
    const Unit& unit = unitNamed(attribute.unit);
    return scaled(*number, unit.factor, unit.places);
}

std::optional<std::string> valueIn(const std::vector<Row>& rows, const Attribute& attribute) {
    std::optional<std::string> all;
    for (const Row& row : rows) {
        const std::optional<std::string> number = numberIn(row, attribute);
        if (!number)
            continue;
        if (attribute.kind == Kind::date)
            all = all && isLater(*all, *number) ? all : number;
        else
            all = sumOf(all.value_or("0"), *number);
    }
    if (!all || attribute.kind == Kind::date)
        return all;
    if (attribute.kind == Kind::interval)
        return withPoint(*all, 6);
    const Unit& unit = unitNamed(attribute.unit);
    return scaled(*all, unit.factor, unit.places);
}

std::string textIn(const Row& row, const Attribute& attribute) {
    const Property* const property = row.find(&attribute);
    std::string text;
    for (std::size_t i = 0; property != nullptr && i < property->values.size(); ++i) {
        const std::string& value = property->values[i];
        const char* const meaning = attribute.values.find(value);
        text += (i > 0 ? "," : "") + (meaning == nullptr ? value : inSnakeCase(meaning));
    }
    return text;
}

} // namespace metrics
