#ifndef OPENWBEM_DATE_TIME_TEXT_HPP_INCLUDED
#define OPENWBEM_DATE_TIME_TEXT_HPP_INCLUDED
#include "OW_DateTime.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"

#include <ctime>

namespace OpenWBEM {

/** A date in its fields. */
struct DateFields {
    int year = -1;
    int month = -1; // from 1 on, as the day
    int day = -1;
    int hour = -1;
    int minute = -1;
    int second = 0;
    int microsecond = 0;

    /** Whether each field is in its range; any month has 31 days, any minute 61 seconds. */
    bool areInRange() const;
    /**
     * The fields for timegm() and mktime(), which find out the weekday and about daylight saving. Years below
     * 1900 count from 1900.
     */
    tm toTm() const;
};

/** What a text says of a date. */
struct ReadDate {
    tm fields{}; // some of them out of their ranges, by the offset from UTC
    DateTime::ETimeOffset offset = DateTime::E_UTC_TIME;
    UInt32 microseconds = 0;
};

/** Reads a date, see DateTime; DateTimeException for a text that is none. */
ReadDate readDate(const String& text);

/** As asctime(), for fields of any size; "???" for a weekday or a month that is none. */
String asctimeText(const tm& fields);

} // namespace OpenWBEM
#endif
