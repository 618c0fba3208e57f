#ifndef SNMP_MAPPING_DATE_HPP
#define SNMP_MAPPING_DATE_HPP

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/** CIM dates, yyyymmddhhmmss.mmmmmmsutc (DSP0004), without the limit of 2038 that the library has. */
namespace snmp {

/** DateAndTime (RFC 2579) of a CIM date: 11 octets, or 8 if the offset is unknown. Nothing for a text that is
 * no date, or whose date or time has asterisks. */
std::optional<std::string> dateAndTime(std::string_view text);

/** Hundredths of a second from 1970-01-01 00:00:00 UTC to a CIM date. An unknown offset counts as none. */
std::optional<std::int64_t> hundredthsOf(std::string_view text);

} // namespace snmp
#endif
