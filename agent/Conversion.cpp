#include "agent/Conversion.hpp"

// Before owb.h, which declares functions with the client library's classes only after their headers.
#include <OW_CIMDateTime.hpp>
#include <OW_Exception.hpp>
#include <OW_String.hpp>

#include <owb.h>

#include <cmath>
#include <cstdint>
#include <regex>

namespace agent {
namespace {

constexpr long secondsOf1970 = 365L * 24 * 60 * 60;

long epoch(std::string text) {
    return OWB_calcTimeEpoch(text.data());
}

// The first four adjacent digits are the year, in a CIM date as in an English one.
std::string withNextYear(const std::string& text) {
    std::smatch year;
    if (!std::regex_search(text, year, std::regex("[0-9]{4}")))
        return text;
    const std::string next = std::to_string(10000 + std::stoi(year.str()) + 1).substr(1); // still four digits
    return year.prefix().str() + next + year.suffix().str();
}

bool isInterval(const std::string& text) {
    return std::regex_match(text, std::regex("[0-9*]{14}\\.[0-9*]{6}:[0-9]{3}"));
}

OWB_TIME_UNIT unitOf(const std::string& name) {
    if (name == "cs")
        return OWB_TIME_HUNDREDTHS;
    if (name == "ms")
        return OWB_TIME_MILLISECONDS;
    return name == "us" ? OWB_TIME_MICROSECONDS : OWB_TIME_SECONDS;
}

std::int64_t unitsPerSecond(OWB_TIME_UNIT unit) {
    switch (unit) {
    case OWB_TIME_HUNDREDTHS:
        return 100;
    case OWB_TIME_MILLISECONDS:
        return 1000;
    case OWB_TIME_MICROSECONDS:
        return 1000000;
    default:
        return 1;
    }
}

/** The length that the library computes, without its limit of 32 bits. A field with a sign is negative. */
std::int64_t lengthOf(const OpenWBEM::CIMDateTime& interval, OWB_TIME_UNIT unit) {
    const auto field = [](OpenWBEM::UInt32 value) { return std::int64_t{static_cast<std::int32_t>(value)}; };
    const std::int64_t seconds = field(interval.getDays()) * 86400 + field(interval.getHours()) * 3600 +
                                 field(interval.getMinutes()) * 60 + field(interval.getSeconds());
    const std::int64_t units = unitsPerSecond(unit);
    if (units == 1) // fractions are dropped
        return seconds;
    const auto microseconds = static_cast<double>(field(interval.getMicroSeconds()));
    return seconds * units + std::llround(microseconds * static_cast<double>(units) / 1e6);
}

/** Whether the library's number for an interval is not its length, because 32 bits do not hold it. */
bool hasWrapped(long number, const std::string& text, OWB_TIME_UNIT unit) {
    try {
        return lengthOf(OpenWBEM::CIMDateTime(OpenWBEM::String(text.c_str())), unit) != number;
    } catch (const OpenWBEM::Exception&) { // no interval: the library returned 0
        return false;
    }
}

} // namespace

Conversion convertDate(const std::string& text) {
    const long number = epoch(text);
    if (number == 0 && epoch(withNextYear(text)) != secondsOf1970)
        return {text, "s", std::nullopt, "no date from 1970 to 2038-01-19 03:14:07 UTC"};
    return {text, "s", number, {}};
}

Conversion convertInterval(const std::string& text, const std::string& unit) {
    std::string copy = text;
    const long number = OWB_calcTimeInterval(copy.data(), unitOf(unit));
    if (hasWrapped(number, text, unitOf(unit)))
        return {text, unit, std::nullopt,
                "too long for 32 bits in " + unit + ": the library's number wraps to " +
                    std::to_string(number)};
    if (number == 0 && !isInterval(text))
        return {text, unit, std::nullopt, "no interval of the form ddddddddhhmmss.mmmmmm:000"};
    return {text, unit, number, {}};
}

} // namespace agent
