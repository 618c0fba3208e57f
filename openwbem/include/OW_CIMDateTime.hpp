#ifndef OW_CIMDATETIME_HPP_INCLUDED
#define OW_CIMDATETIME_HPP_INCLUDED
#include "OW_CIMNULL.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_String.hpp"
#include "OW_Types.hpp"
#include "detail/OW_SafeBool.hpp"
#include <iosfwd>

namespace OpenWBEM {

/** A text is neither a CIM date nor a CIM interval. */
OW_DECLARE_EXCEPTION(CIMDateTime)

/**
 * A CIM datetime (DSP0004): a date `yyyymmddhhmmss.mmmmmm+uuu` with its offset from UTC in minutes, or an
 * interval `ddddddddhhmmss.mmmmmm:000`. Fields are stored as given, without range checks.
 */
class OW_COMMON_API CIMDateTime {
public:
    enum EErrorCodes { E_INVALID_DATE_TIME_FORMAT = 0 };

    /** The interval 0. */
    CIMDateTime() = default;
    explicit CIMDateTime(CIMNULL_t);
    /**
     * Character 21, counted from 0, selects the form: ':' an interval, '+' or '-' a date; any other throws
     * CIMDateTimeException. Fields are parsed as by atoi(). The empty text is the interval 0.
     */
    explicit CIMDateTime(const String& text);
    /** An interval; wraps at 2^32 seconds. */
    explicit CIMDateTime(UInt64 microSeconds);
    /** A date in local time. */
    CIMDateTime(const DateTime& instant);

    UInt16 getYear() const { return read().year; }
    UInt8 getMonth() const { return read().month; }
    UInt32 getDays() const { return read().days; }
    UInt32 getDay() const { return read().days; }
    UInt8 getHours() const { return read().hours; }
    UInt8 getMinutes() const { return read().minutes; }
    UInt8 getSeconds() const { return read().seconds; }
    UInt32 getMicroSeconds() const { return read().microSeconds; }
    /** Offset from UTC in minutes, positive east of Greenwich. */
    Int16 getUtc() const { return read().utc; }
    bool isInterval() const { return read().interval; }

    CIMDateTime& setYear(UInt16 value);
    CIMDateTime& setMonth(UInt8 value);
    CIMDateTime& setDays(UInt32 value);
    CIMDateTime& setDay(UInt32 value) { return setDays(value); }
    CIMDateTime& setHours(UInt8 value);
    CIMDateTime& setMinutes(UInt8 value);
    CIMDateTime& setSeconds(UInt8 value);
    CIMDateTime& setMicroSeconds(UInt32 value);
    CIMDateTime& setUtc(Int16 value);
    void setInterval(bool value);

    String toString() const;
    /** The instant of a date. Throws DateTimeException for an interval, and for a date out of the range of
     * DateTime. */
    DateTime toDateTime() const;
    /** Whether all fields are equal; offsets are not normalized. */
    bool equal(const CIMDateTime& other) const;

    /** False for a null object, and if all fields but the offset are 0. */
    operator detail::SafeBool() const;
    bool operator!() const { return !static_cast<bool>(static_cast<detail::SafeBool>(*this)); }

private:
    struct Fields {
        UInt32 days = 0;
        UInt32 microSeconds = 0;
        UInt16 year = 0;
        Int16 utc = 0;
        UInt8 month = 0;
        UInt8 hours = 0;
        UInt8 minutes = 0;
        UInt8 seconds = 0;
        bool interval = true;
        bool null = false;
    };
    const Fields& read() const;
    Fields& edit();

    Fields m_fields;
};

inline bool operator==(const CIMDateTime& a, const CIMDateTime& b) {
    return a.equal(b);
}
inline bool operator!=(const CIMDateTime& a, const CIMDateTime& b) {
    return !a.equal(b);
}
/** Orders by toDateTime(), which throws for intervals. */
OW_COMMON_API bool operator<(const CIMDateTime& a, const CIMDateTime& b);
inline bool operator<=(const CIMDateTime& a, const CIMDateTime& b) {
    return !(b < a);
}
inline bool operator>(const CIMDateTime& a, const CIMDateTime& b) {
    return b < a;
}
inline bool operator>=(const CIMDateTime& a, const CIMDateTime& b) {
    return !(a < b);
}
/** Writes toString(). */
OW_COMMON_API std::ostream& operator<<(std::ostream& out, const CIMDateTime& dateTime);

} // namespace OpenWBEM
#endif
