#include "metrics/Decimal.hpp"

#include "util/Number.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace metrics {
namespace {

constexpr std::int64_t perSecond = 1000000;
constexpr std::int64_t secondsPerDay = 86400;

/** The digit at a distance from the end; 0 beyond the first. */
unsigned digitAt(std::string_view digits, std::size_t fromEnd) {
    return fromEnd < digits.size() ? static_cast<unsigned>(digits[digits.size() - 1 - fromEnd] - '0') : 0;
}

/** The text of digits that begin with the lowest, each below 10 after carrying. */
std::string carried(std::vector<unsigned> lowestFirst) {
    std::string text;
    unsigned carry = 0;
    for (unsigned& digit : lowestFirst) {
        digit += carry;
        carry = digit / 10;
        text += static_cast<char>('0' + digit % 10);
    }
    for (; carry > 0; carry /= 10)
        text += static_cast<char>('0' + carry % 10);
    text.resize(std::max<std::size_t>(text.find_last_not_of('0') + 1, 1));
    std::reverse(text.begin(), text.end());
    return text;
}

std::optional<std::int64_t> fieldOf(std::string_view text, std::size_t begin, std::size_t size) {
    return util::decimal<std::int64_t>(text.substr(begin, size));
}

/** Microseconds of "hhmmss.mmmmmm", the time of day in dates and intervals. */
std::optional<std::int64_t> timeOfDay(std::string_view text) {
    const auto hours = fieldOf(text, 0, 2);
    const auto minutes = fieldOf(text, 2, 2);
    const auto seconds = fieldOf(text, 4, 2);
    const auto fraction = text.substr(7) == "******" ? std::optional<std::int64_t>(0) : fieldOf(text, 7, 6);
    if (!hours || !minutes || !seconds || !fraction || text[6] != '.')
        return std::nullopt;
    if (*hours > 23 || *minutes > 59 || *seconds > 60) // 60: a leap second
        return std::nullopt;
    return ((*hours * 60 + *minutes) * 60 + *seconds) * perSecond + *fraction;
}

bool isLeap(std::int64_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/** Days from 1970-01-01 to a date of the Gregorian calendar, "yyyymmdd"; nothing if there is no such day. */
std::optional<std::int64_t> dayOf(std::string_view text) {
    const auto year = fieldOf(text, 0, 4);
    const auto month = fieldOf(text, 4, 2);
    const auto day = fieldOf(text, 6, 2);
    if (!year || !month || !day || *month < 1 || *month > 12)
        return std::nullopt;
    static const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::int64_t days = *day - 1;
    for (std::int64_t earlier = 1; earlier < *month; ++earlier)
        days += lengths[earlier - 1] + (earlier == 2 && isLeap(*year) ? 1 : 0);
    if (*day < 1 || *day > lengths[*month - 1] + (*month == 2 && isLeap(*year) ? 1 : 0))
        return std::nullopt;
    const std::int64_t past = *year - 1; // complete years since year 1; -1 for year 0, a leap year
    const std::int64_t leapDays = *year == 0 ? -1 : past / 4 - past / 100 + past / 400;
    return past * 365 + leapDays + days - 719162; // days from 0001-01-01 to 1970-01-01
}

/** Minutes that a local time is ahead of UTC, "+060". */
std::optional<std::int64_t> offsetOf(std::string_view text) {
    const auto minutes = fieldOf(text, 1, 3);
    if (!minutes || (text[0] != '+' && text[0] != '-'))
        return std::nullopt;
    return text[0] == '-' ? -*minutes : *minutes;
}

} // namespace

std::optional<std::string> digitsOf(std::string_view text) {
    const auto value = util::decimal<std::uint64_t>(text);
    return value ? std::optional(std::to_string(*value)) : std::nullopt;
}

std::optional<std::string> integerOf(std::string_view text) {
    if (const auto value = util::number<std::int64_t>(text))
        return std::to_string(*value);
    return digitsOf(text);
}

std::string sumOf(std::string_view digits, std::string_view others) {
    std::vector<unsigned> sums(std::max(digits.size(), others.size()));
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] = digitAt(digits, i) + digitAt(others, i);
    return carried(std::move(sums));
}

std::string productOf(std::string_view digits, std::string_view others) {
    std::vector<unsigned> sums(digits.size() + others.size());
    for (std::size_t i = 0; i < digits.size(); ++i) {
        for (std::size_t k = 0; k < others.size(); ++k)
            sums[i + k] += digitAt(digits, i) * digitAt(others, k);
    }
    return carried(std::move(sums));
}

std::string withPoint(std::string_view integer, std::size_t places) {
    const bool isNegative = integer.front() == '-';
    std::string text(integer.substr(isNegative ? 1 : 0));
    if (text.size() <= places)
        text.insert(0, places + 1 - text.size(), '0');
    if (places > 0) {
        text.insert(text.size() - places, 1, '.');
        text.resize(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return (isNegative ? "-" : "") + text;
}

std::optional<std::string> timestampOf(std::string_view date) {
    if (date.size() != 25)
        return std::nullopt;
    const auto day = dayOf(date.substr(0, 8));
    const auto time = timeOfDay(date.substr(8, 13));
    const auto offset = offsetOf(date.substr(21));
    if (!day || !time || !offset)
        return std::nullopt;
    return withPoint(std::to_string((*day * secondsPerDay - *offset * 60) * perSecond + *time), 6);
}

std::optional<std::string> microsecondsOf(std::string_view interval) {
    if (interval.size() != 25 || interval.substr(21) != ":000")
        return std::nullopt;
    const auto days = fieldOf(interval, 0, 8);
    const auto time = timeOfDay(interval.substr(8, 13));
    if (!days || !time)
        return std::nullopt;
    return std::to_string(*days * secondsPerDay * perSecond + *time);
}

} // namespace metrics
