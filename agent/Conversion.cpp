#include "agent/Conversion.hpp"

#include <owb.h>

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
    if (number == 0 && !isInterval(text))
        return {text, unit, std::nullopt, "no interval of the form ddddddddhhmmss.mmmmmm:000"};
    return {text, unit, number, {}};
}

} // namespace agent
