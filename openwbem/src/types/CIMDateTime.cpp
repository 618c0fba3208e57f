#include "OW_CIMDateTime.hpp"

#include "OW_DateTime.hpp"
#include "detail/OW_Shared.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <ostream>
#include <string>
#include <string_view>

namespace OpenWBEM {
namespace {

const std::size_t formIndex = 21;     // of the character that distinguishes dates from intervals
const std::size_t maximumLength = 34; // the rest of a text is ignored

int field(std::string_view text, std::size_t begin, std::size_t length) {
    char digits[maximumLength] = {}; // NUL-terminated
    text.copy(digits, std::min(length, sizeof digits - 1), begin);
    return static_cast<int>(std::strtol(digits, nullptr, 10));
}

} // namespace

CIMDateTime::CIMDateTime(CIMNULL_t) {
    m_fields.null = true;
}

CIMDateTime::CIMDateTime(const String& string) {
    if (string.empty())
        return;
    const std::string_view text = std::string_view(string.c_str()).substr(0, maximumLength);
    const char form = text.size() > formIndex ? text[formIndex] : '\0';
    if (form != ':' && form != '+' && form != '-')
        OW_THROW_ERR(CIMDateTimeException, "Invalid format for date time", E_INVALID_DATE_TIME_FORMAT);

    m_fields.interval = form == ':';
    if (m_fields.interval) {
        m_fields.days = static_cast<UInt32>(field(text, 0, 8));
    } else {
        m_fields.year = static_cast<UInt16>(field(text, 0, 4));
        m_fields.month = static_cast<UInt8>(field(text, 4, 2));
        m_fields.days = static_cast<UInt32>(field(text, 6, 2));
        m_fields.utc = static_cast<Int16>(field(text, formIndex, maximumLength - formIndex));
    }
    m_fields.hours = static_cast<UInt8>(field(text, 8, 2));
    m_fields.minutes = static_cast<UInt8>(field(text, 10, 2));
    m_fields.seconds = static_cast<UInt8>(field(text, 12, 2));
    m_fields.microSeconds = static_cast<UInt32>(field(text, 15, 6));
}

CIMDateTime::CIMDateTime(UInt64 microSeconds) {
    const UInt32 seconds = static_cast<UInt32>(microSeconds / 1000000);
    m_fields.days = seconds / 86400;
    m_fields.hours = static_cast<UInt8>(seconds / 3600 % 24);
    m_fields.minutes = static_cast<UInt8>(seconds / 60 % 60);
    m_fields.seconds = static_cast<UInt8>(seconds % 60);
    m_fields.microSeconds = static_cast<UInt32>(microSeconds % 1000000);
}

CIMDateTime::CIMDateTime(const DateTime& instant) {
    const time_t seconds = instant.get();
    tm local{};
    localtime_r(&seconds, &local);
    m_fields.interval = false;
    m_fields.year = static_cast<UInt16>(local.tm_year + 1900);
    m_fields.month = static_cast<UInt8>(local.tm_mon + 1);
    m_fields.days = static_cast<UInt32>(local.tm_mday);
    m_fields.hours = static_cast<UInt8>(local.tm_hour);
    m_fields.minutes = static_cast<UInt8>(local.tm_min);
    m_fields.seconds = static_cast<UInt8>(local.tm_sec);
    m_fields.microSeconds = instant.getMicrosecond();
    m_fields.utc = static_cast<Int16>(local.tm_gmtoff / 60);
}

CIMDateTime& CIMDateTime::setYear(UInt16 value) {
    edit().year = value;
    return *this;
}
CIMDateTime& CIMDateTime::setMonth(UInt8 value) {
    edit().month = value;
    return *this;
}
CIMDateTime& CIMDateTime::setDays(UInt32 value) {
    edit().days = value;
    return *this;
}
CIMDateTime& CIMDateTime::setHours(UInt8 value) {
    edit().hours = value;
    return *this;
}
CIMDateTime& CIMDateTime::setMinutes(UInt8 value) {
    edit().minutes = value;
    return *this;
}
CIMDateTime& CIMDateTime::setSeconds(UInt8 value) {
    edit().seconds = value;
    return *this;
}
CIMDateTime& CIMDateTime::setMicroSeconds(UInt32 value) {
    edit().microSeconds = value;
    return *this;
}
CIMDateTime& CIMDateTime::setUtc(Int16 value) {
    edit().utc = value;
    return *this;
}
void CIMDateTime::setInterval(bool value) {
    edit().interval = value;
}

String CIMDateTime::toString() const {
    const Fields& f = read();
    char text[64]; // fits every field at its maximum
    if (f.interval)
        std::snprintf(text, sizeof text, "%08u%02u%02u%02u.%06u:000", f.days, unsigned{f.hours},
                      unsigned{f.minutes}, unsigned{f.seconds}, f.microSeconds);
    else
        std::snprintf(text, sizeof text, "%04u%02u%02u%02u%02u%02u.%06u%+04d", unsigned{f.year},
                      unsigned{f.month}, f.days, unsigned{f.hours}, unsigned{f.minutes}, unsigned{f.seconds},
                      f.microSeconds, int{f.utc});
    return text;
}

DateTime CIMDateTime::toDateTime() const {
    return DateTime(toString());
}

bool CIMDateTime::equal(const CIMDateTime& other) const {
    const Fields& a = read();
    const Fields& b = other.read();
    return a.interval == b.interval && a.year == b.year && a.month == b.month && a.days == b.days &&
           a.hours == b.hours && a.minutes == b.minutes && a.seconds == b.seconds &&
           a.microSeconds == b.microSeconds && a.utc == b.utc;
}

CIMDateTime::operator detail::SafeBool() const {
    const Fields& f = m_fields;
    return detail::safeBool(
        !f.null && (f.year || f.month || f.days || f.hours || f.minutes || f.seconds || f.microSeconds));
}

const CIMDateTime::Fields& CIMDateTime::read() const {
    if (m_fields.null)
        detail::throwNullReference();
    return m_fields;
}

CIMDateTime::Fields& CIMDateTime::edit() {
    read();
    return m_fields;
}

bool operator<(const CIMDateTime& a, const CIMDateTime& b) {
    return a.toDateTime() < b.toDateTime();
}

std::ostream& operator<<(std::ostream& out, const CIMDateTime& dateTime) {
    return out << dateTime.toString();
}

} // namespace OpenWBEM
