#include "snmp/mapping/Date.hpp"

#include "util/Number.hpp"

#include <owb.h>

namespace snmp {
namespace {

constexpr std::size_t dateSize = 25;
constexpr std::size_t fractionAt = 15;
constexpr std::size_t signAt = 21;
constexpr int highestOffset = 14 * 60; // of any time zone, in minutes

struct Date {
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;
    int microseconds;
    /** Minutes east of UTC; nothing if unknown. */
    std::optional<int> offset;
};

bool isIn(int value, int lowest, int highest) {
    return value >= lowest && value <= highest;
}

std::optional<int> offsetIn(std::string_view text) {
    const auto minutes = util::decimal<int>(text.substr(signAt + 1));
    if (!minutes || *minutes > highestOffset)
        return std::nullopt;
    return text[signAt] == '-' ? -*minutes : *minutes;
}

std::optional<Date> parse(std::string_view text) {
    if (text.size() != dateSize || text[fractionAt - 1] != '.' ||
        (text[signAt] != '+' && text[signAt] != '-'))
        return std::nullopt;
    const auto field = [&text](std::size_t at, std::size_t size) {
        return util::decimal<int>(text.substr(at, size)).value_or(-1);
    };
    const Date date{field(0, 4),  field(4, 2),  field(6, 2),          field(8, 2),
                    field(10, 2), field(12, 2), field(fractionAt, 6), offsetIn(text)};
    const bool isValid = date.year >= 0 && isIn(date.month, 1, 12) && isIn(date.day, 1, 31) &&
                         isIn(date.hour, 0, 23) && isIn(date.minute, 0, 59) && isIn(date.second, 0, 60) &&
                         date.microseconds >= 0;
    return isValid ? std::optional(date) : std::nullopt;
}

/** Days from 1970-01-01 in the Gregorian calendar. Years begin in March, so that a leap day ends one. */
std::int64_t daysFrom1970(const Date& date) {
    constexpr std::int64_t daysBefore1970 = 719468; // from 0000-03-01
    const std::int64_t year = date.year - (date.month <= 2 ? 1 : 0);
    const int month = (date.month + 9) % 12;
    const std::int64_t leapDays = year / 4 - year / 100 + year / 400;
    return year * 365 + leapDays + (153 * month + 2) / 5 + date.day - 1 - daysBefore1970;
}

/** By the library, which returns 0 for dates that it cannot represent, from 2038 on. */
std::int64_t secondsOf(const Date& date, std::string_view text) {
    if (date.offset) {
        if (const long seconds = OWB_calcTimeEpoch(std::string(text).data()); seconds != 0)
            return seconds;
    }
    return ((daysFrom1970(date) * 24 + date.hour) * 60 + date.minute - date.offset.value_or(0)) * 60 +
           date.second;
}

} // namespace

std::optional<std::string> dateAndTime(std::string_view text) {
    const std::optional<Date> date = parse(text);
    if (!date)
        return std::nullopt;
    std::string octets;
    const auto append = [&octets](int number) { octets += static_cast<char>(number); };
    for (const int number : {date->year / 256, date->year % 256, date->month, date->day, date->hour,
                             date->minute, date->second, date->microseconds / 100000})
        append(number);
    if (date->offset) {
        const int minutes = *date->offset < 0 ? -*date->offset : *date->offset;
        for (const int number : {*date->offset < 0 ? int{'-'} : int{'+'}, minutes / 60, minutes % 60})
            append(number);
    }
    return octets;
}

std::optional<std::int64_t> hundredthsOf(std::string_view text) {
    const std::optional<Date> date = parse(text);
    if (!date)
        return std::nullopt;
    return secondsOf(*date, text) * 100 + date->microseconds / 10000;
}

} // namespace snmp
