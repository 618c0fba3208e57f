#include "agent/Conversion.hpp"

#include "util/Ascii.hpp"

// Before owb.h, which declares functions with the client library's classes only after their headers.
#include <OW_CIMDateTime.hpp>
#include <OW_Exception.hpp>
#include <OW_String.hpp>

#include <owb.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace agent {
namespace {

constexpr long secondsOf1970 = 365L * 24 * 60 * 60;

long epoch(std::string text) {
    return OWB_calcTimeEpoch(text.data());
}

// The first four adjacent digits are the year, in a CIM date as in an English one.
std::string withNextYear(const std::string& text) {
    const auto year =
        std::search_n(text.begin(), text.end(), 4, 0, [](char c, int) { return ascii::isDigit(c); });
    if (year == text.end())
        return text;
    const int next = std::stoi(std::string(year, year + 4)) + 1;
    return std::string(text.begin(), year) + std::to_string(10000 + next).substr(1) + // still four digits
           std::string(year + 4, text.end());
}

bool isInterval(const std::string& text) {
    constexpr std::string_view form = "**************.******:000"; // *: a digit or an asterisk, 0: a digit
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char c, char formed) {
        return c == formed || (formed != '.' && formed != ':' && ascii::isDigit(c));
    });
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
