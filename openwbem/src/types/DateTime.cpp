#include "OW_DateTime.hpp"

#include "DateTimeText.hpp"

#include <ctime>
#include <string>
#include <sys/time.h>

namespace OpenWBEM {
namespace {

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
    // strftime() gives 0 for a text that does not fit as for an empty one: a blank tells them apart.
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
    fields.tm_wday = 0; // the message shows Sunday for an instant that does not fit, as OpenWBEM's does
    tm normal = fields;
    const time_t seconds = offset == E_UTC_TIME ? timegm(&normal) : std::mktime(&normal);
    if (seconds < 0 || !fitsInt32(seconds)) {
        // A time_t of 32 bits leaves fields that do not fit as they are.
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
