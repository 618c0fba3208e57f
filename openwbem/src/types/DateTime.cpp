#include "OW_DateTime.hpp"

#include "OW_Array.hpp"
#include "OW_String.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <iterator>
#include <string>
#include <sys/time.h>

namespace OpenWBEM {
namespace {

// A date in its fields.
struct DateFields {
    int year = -1;
    int month = -1; // from 1, like the day
    int day = -1;
    int hour = -1;
    int minute = -1;
    int second = 0;
    int microsecond = 0;

    // Any month has 31 days, any minute 61 seconds.
    bool areInRange() const {
        const auto isIn = [](int value, int least, int most) { return value >= least && value <= most; };
        return isIn(year, 0, 9999) && isIn(month, 1, 12) && isIn(day, 1, 31) && isIn(hour, 0, 23) &&
               isIn(minute, 0, 59) && isIn(second, 0, 60) && isIn(microsecond, 0, 999999);
    }

    // The fields for timegm() and mktime(), which compute the weekday and daylight saving. Years below 1900
    // count from 1900.
    tm toTm() const {
        tm result{};
        result.tm_year = year < 1900 ? year : year - 1900;
        result.tm_mon = month - 1;
        result.tm_mday = day;
        result.tm_hour = hour;
        result.tm_min = minute;
        result.tm_sec = second;
        result.tm_wday = -1;
        result.tm_isdst = -1;
        return result;
    }
};

// The date that a text states.
struct ReadDate {
    tm fields{}; // out of range where the offset from UTC was subtracted
    DateTime::ETimeOffset offset = DateTime::E_UTC_TIME;
    UInt32 microseconds = 0;
};

const char* const weekdays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
const char* const months[] = {"January", "February", "March",     "April",   "May",      "June",
                              "July",    "August",   "September", "October", "November", "December"};
const std::size_t shortName = 3; // letters of an abbreviated name

// Time zones in hours east of UTC. Single letters are military time zones.
struct Zone {
    const char* name;
    int hours;
};
const Zone zones[] = {
    {"UTC", 0}, {"GMT", 0},   {"WET", 0}, {"Z", 0},     {"BST", 1},  {"IST", 1},  {"WEST", 1}, {"CET", 1},
    {"A", 1},   {"CEST", 2},  {"EET", 2}, {"B", 2},     {"EEST", 3}, {"MSK", 3},  {"C", 3},    {"MSD", 4},
    {"D", 4},   {"E", 5},     {"F", 6},   {"G", 7},     {"WST", 8},  {"H", 8},    {"I", 9},    {"K", 10},
    {"L", 11},  {"M", 12},    {"N", -1},  {"O", -2},    {"ADT", -3}, {"P", -3},   {"AST", -4}, {"EDT", -4},
    {"Q", -4},  {"EST", -5},  {"ET", -5}, {"CDT", -5},  {"R", -5},   {"CST", -6}, {"CT", -6},  {"MDT", -6},
    {"S", -6},  {"MST", -7},  {"MT", -7}, {"PDT", -7},  {"T", -7},   {"PST", -8}, {"PT", -8},  {"AKDT", -8},
    {"U", -8},  {"AKST", -9}, {"V", -9},  {"HST", -10}, {"W", -10},  {"X", -11},  {"Y", -12},
};
const char* const localZone = "J";

// Index of a name, full or abbreviated; -1 if there is none.
template <std::size_t Count>
int indexOf(const char* const (&names)[Count], const String& text) {
    const auto found = std::find_if(std::begin(names), std::end(names), [&text](const char* name) {
        return text == name || text == String(name, shortName);
    });
    return found == std::end(names) ? -1 : static_cast<int>(found - names);
}

// Consumes at most six digits; false if the text starts with none.
bool takeDigits(const char*& text, int& number) {
    const char* const begin = text;
    for (number = 0; ascii::isDigit(*text) && number < 100000; ++text)
        number = number * 10 + (*text - '0');
    return text != begin;
}

// A date in English, token by token. Each kind of token occurs once at most, a number twice.
class EnglishDate {
public:
    bool read(const StringArray& tokens, ReadDate& date) {
        if (!std::all_of(tokens.begin(), tokens.end(), [this](const String& token) { return take(token); }) ||
            !m_fields.areInRange())
            return false;
        date.fields = m_fields.toTm();
        date.offset = m_isLocal ? DateTime::E_LOCAL_TIME : DateTime::E_UTC_TIME;
        date.fields.tm_hour -= m_hoursEast;
        // The zone may not move the date into the previous year.
        return date.fields.tm_hour >= 0 || m_fields.month != 1 || m_fields.day != 1;
    }

private:
    bool take(const String& token) {
        if (!m_hasWeekday && indexOf(weekdays, token) >= 0)
            return m_hasWeekday = true;
        if (m_fields.month < 0 && indexOf(months, token) >= 0) {
            m_fields.month = indexOf(months, token) + 1;
            return true;
        }
        if (m_fields.hour < 0 && token.indexOf(':') != String::npos)
            return takeTime(token.c_str());
        if (m_fields.day < 0 || m_fields.year < 0)
            return takeNumber(token.c_str()) || takeZone(token);
        return takeZone(token);
    }

    bool takeTime(const char* token) {
        if (!takeDigits(token, m_fields.hour) || *token++ != ':' || !takeDigits(token, m_fields.minute))
            return false;
        if (!*token)
            return true;
        return *token++ == ':' && takeDigits(token, m_fields.second) && !*token;
    }

    bool takeNumber(const char* token) {
        int& number = m_fields.day < 0 ? m_fields.day : m_fields.year;
        int read = 0;
        if (!takeDigits(token, read) || *token)
            return false;
        number = read;
        return true;
    }

    bool takeZone(const String& token) {
        if (m_hasZone)
            return false;
        m_hasZone = true;
        if (token == localZone)
            return true;
        const auto zone = std::find_if(std::begin(zones), std::end(zones),
                                       [&token](const Zone& entry) { return token == entry.name; });
        if (zone == std::end(zones))
            return false;
        m_isLocal = false;
        m_hoursEast = zone->hours;
        return true;
    }

    DateFields m_fields;
    bool m_hasWeekday = false;
    bool m_hasZone = false;
    bool m_isLocal = true;
    int m_hoursEast = 0;
};

bool isCIMDate(const String& text) {
    return text.length() == 25 && text.charAt(14) == '.' &&
           (text.charAt(21) == '+' || text.charAt(21) == '-');
}

// False if a field is out of range; throws StringConversionException if a field is not a number.
bool readCIMDate(String text, ReadDate& date) {
    for (std::size_t i = 0; i < text.length(); ++i)
        if (text.charAt(i) == '*')
            text[i] = '0';
    const auto field = [&text](std::size_t begin, std::size_t length) {
        return text.substring(begin, length).toInt32();
    };
    DateFields fields;
    fields.year = field(0, 4);
    fields.month = field(4, 2);
    fields.day = field(6, 2);
    fields.hour = field(8, 2);
    fields.minute = field(10, 2);
    fields.second = field(12, 2);
    fields.microsecond = field(15, 6);
    const int minutesEast = field(22, 3);
    if (!fields.areInRange())
        return false;
    date.fields = fields.toTm();
    date.fields.tm_min -= text.charAt(21) == '+' ? minutesEast : -minutesEast;
    date.microseconds = static_cast<UInt32>(fields.microsecond);
    return true;
}

// Throws DateTimeException if the text is not a date.
ReadDate readDate(const String& text) {
    ReadDate date;
    try {
        if (isCIMDate(text) ? readCIMDate(text, date) : EnglishDate().read(text.tokenize(), date))
            return date;
    } catch (const StringConversionException&) {
        // reported below
    }
    OW_THROW(DateTimeException, ("Invalid DateTime: " + text).c_str());
}

// Like asctime(), for fields of any size; "???" for a weekday or month out of range.
String asctimeText(const tm& fields) {
    const auto name = [](const auto& names, int index) {
        return index >= 0 && index < static_cast<int>(std::size(names)) ? names[index] : "???";
    };
    String text;
    text.format("%.3s %.3s%3d %.2d:%.2d:%.2d %lld\n", name(weekdays, fields.tm_wday),
                name(months, fields.tm_mon), fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec,
                1900LL + fields.tm_year);
    return text;
}

bool fitsInt32(Int64 seconds) {
    return static_cast<Int32>(seconds) == seconds;
}

} // namespace

DateTime::DateTime(const String& text) {
    const ReadDate date = readDate(text);
    set(date.fields, date.offset);
    m_microseconds = date.microseconds;
}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, UInt32 microsecond,
                   ETimeOffset offset) {
    DateFields fields;
    fields.year = year;
    fields.month = month;
    fields.day = day;
    fields.hour = hour;
    fields.minute = minute;
    fields.second = second;
    if (!fields.areInRange() || microsecond > 999999)
        OW_THROW(DateTimeException, "Invalid DateTime: a field is out of its range");
    tm exact = fields.toTm();
    exact.tm_year = year - 1900;
    set(exact, offset);
    m_microseconds = microsecond;
}

void DateTime::setToCurrent() {
    timeval now;
    gettimeofday(&now, nullptr);
    m_time = narrow(now.tv_sec);
    m_microseconds = static_cast<UInt32>(now.tv_usec);
}

String DateTime::toString(ETimeOffset offset) const {
    return asctimeText(fields(offset));
}

String DateTime::toString(const char* form, ETimeOffset offset) const {
    if (!*form)
        return String();
    const tm date = fields(offset);
    // strftime() returns 0 both for an empty text and for a full buffer; the blank makes the text non-empty.
    const std::string marked = std::string(form) + ' ';
    std::string text(marked.size() * 2 + 64, '\0');
    std::size_t length = 0;
    while ((length = std::strftime(text.data(), text.size(), marked.c_str(), &date)) == 0)
        text.resize(text.size() * 2);
    return String(text.data(), length - 1);
}

Int32 DateTime::narrow(Int64 seconds) {
    if (!fitsInt32(seconds))
        OW_THROW(DateTimeException, "Unable to represent time as a time_t");
    return static_cast<Int32>(seconds);
}

tm DateTime::fields(ETimeOffset offset) const {
    const time_t seconds = m_time;
    tm result{};
    if (offset == E_UTC_TIME)
        gmtime_r(&seconds, &result);
    else
        localtime_r(&seconds, &result);
    return result;
}

void DateTime::set(tm fields, ETimeOffset offset) {
    fields.tm_wday = 0; // as in OpenWBEM, the message shows Sunday for an instant out of range
    tm normal = fields;
    const time_t seconds = offset == E_UTC_TIME ? timegm(&normal) : std::mktime(&normal);
    if (seconds < 0 || !fitsInt32(seconds)) {
        // With a 32-bit time_t, fields out of range stay unnormalized.
        const String text = asctimeText(fitsInt32(seconds) ? normal : fields);
        OW_THROW(DateTimeException, ("Unable to represent time \"" + text + "\" as a time_t").c_str());
    }
    m_time = static_cast<Int32>(seconds);
}

DateTime& DateTime::add(int tm::*field, Int64 count) {
    tm moved = fields(E_UTC_TIME);
    if (__builtin_add_overflow(moved.*field, count, &(moved.*field)))
        OW_THROW(DateTimeException, "Unable to represent time as a time_t");
    set(moved, E_UTC_TIME);
    return *this;
}

} // namespace OpenWBEM
