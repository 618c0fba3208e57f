#ifndef OW_DATETIME_HPP_INCLUDED
#define OW_DATETIME_HPP_INCLUDED
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include <ctime>

namespace OpenWBEM {

/** A text is not a date, or a date is out of the range of DateTime. */
OW_DECLARE_EXCEPTION(DateTime)

/**
 * An instant: seconds since 1970-01-01 00:00:00 UTC in 31 bits, and microseconds. The range ends at
 * 2038-01-19 03:14:07 UTC for any width of time_t; operations that leave the range throw DateTimeException.
 * Size and layout do not depend on the compiler flags of the including program.
 */
class OW_COMMON_API DateTime {
public:
    /** The time zone of the fields: the local one (see tzset(3)) or UTC. */
    enum ETimeOffset { E_LOCAL_TIME, E_UTC_TIME };

    /** The epoch. */
    DateTime()
        : m_time(0)
        , m_microseconds(0) {}
    /**
     * Parses a CIM date (DSP0004), `yyyymmddhhmmss.mmmmmm+uuu`, with '*' for '0', or an English date, as in
     * "Thu Jan 29 11:02:42 MST 2004": month, time, day and year, and optionally weekday and time zone, in
     * almost any order. Years below 1900 count from 1900. Without a zone the time is local. Throws
     * DateTimeException for any other text.
     */
    explicit DateTime(const String& text);
    /** Throws DateTimeException if the seconds do not fit in an Int32. Does not check for negative seconds.
     */
    explicit DateTime(time_t seconds, UInt32 microseconds = 0)
        : m_time(narrow(seconds))
        , m_microseconds(microseconds) {}
    /** Month and day count from 1. Throws DateTimeException if a field is out of range; every month has 31
     * days. */
    DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
             UInt32 microsecond = 0, ETimeOffset offset = E_LOCAL_TIME);

    /** Seconds since the epoch, without the microseconds. */
    time_t get() const { return m_time; }
    int getYear(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_year + 1900; }
    /** From 1. */
    int getMonth(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_mon + 1; }
    int getDay(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_mday; }
    /** Day of the week, 0 for Sunday. */
    int getDow(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_wday; }
    int getHour(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_hour; }
    int getMinute(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_min; }
    int getSecond(ETimeOffset offset = E_LOCAL_TIME) const { return fields(offset).tm_sec; }
    UInt32 getMicrosecond() const { return m_microseconds; }

    /** Adds a number of units, in UTC; a day beyond the end of its month rolls over. */
    DateTime& addSeconds(long count) { return add(&tm::tm_sec, count); }
    DateTime& addMinutes(long count) { return add(&tm::tm_min, count); }
    DateTime& addHours(long count) { return add(&tm::tm_hour, count); }
    DateTime& addDays(long count) { return add(&tm::tm_mday, count); }
    DateTime& addWeeks(long count) { return add(&tm::tm_mday, Int64{count} * 7); }
    DateTime& addMonths(long count) { return add(&tm::tm_mon, count); }
    DateTime& addYears(long count) { return add(&tm::tm_year, count); }
    DateTime& operator+=(long seconds) { return add(&tm::tm_sec, seconds); }
    DateTime& operator-=(long seconds) { return add(&tm::tm_sec, -Int64{seconds}); }
    void setToCurrent();

    /** The form of asctime(): `Thu Jan 29 11:02:42 2004` and a line feed. */
    String toString(ETimeOffset offset = E_LOCAL_TIME) const;
    /** In a format of strftime(). */
    String toString(const char* form, ETimeOffset offset = E_LOCAL_TIME) const;

    friend bool operator==(const DateTime& a, const DateTime& b) {
        return a.m_time == b.m_time && a.m_microseconds == b.m_microseconds;
    }
    friend bool operator!=(const DateTime& a, const DateTime& b) { return !(a == b); }
    friend bool operator<(const DateTime& a, const DateTime& b) {
        return a.m_time < b.m_time || (a.m_time == b.m_time && a.m_microseconds < b.m_microseconds);
    }
    friend bool operator<=(const DateTime& a, const DateTime& b) { return !(b < a); }
    friend bool operator>(const DateTime& a, const DateTime& b) { return b < a; }
    friend bool operator>=(const DateTime& a, const DateTime& b) { return !(a < b); }

private:
    static Int32 narrow(Int64 seconds);
    tm fields(ETimeOffset offset) const;
    /** Sets the instant; fields may be out of range. */
    void set(tm fields, ETimeOffset offset);
    DateTime& add(int tm::*field, Int64 count);

    Int32 m_time;
    UInt32 m_microseconds;
};

} // namespace OpenWBEM
#endif
