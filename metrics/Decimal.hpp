#ifndef METRICS_DECIMAL_HPP
#define METRICS_DECIMAL_HPP

#include <optional>
#include <string>
#include <string_view>

/**
 * Exact arithmetic on the decimal texts of values.
 *
 * A counter of 64 bits, and a size in blocks times the size of a block, do not fit into a double, and a
 * 32-bit program has no integer of 128 bits. So values stay texts: digits without leading zeros, of any
 * length.
 */
namespace metrics {

/** The digits of an unsigned number of at most 64 bits, without leading zeros; nothing for any other text. */
std::optional<std::string> digitsOf(std::string_view text);

/** Like digitsOf(), but the number may be negative, down to -2^63. */
std::optional<std::string> integerOf(std::string_view text);

std::string sumOf(std::string_view digits, std::string_view others);
std::string productOf(std::string_view digits, std::string_view others);

/** Divides an integer by 10^places: "1500" with 3 places is "1.5". May be negative. */
std::string withPoint(std::string_view integer, std::size_t places);

/** Seconds from 1970-01-01 00:00:00 UTC to a CIM date, yyyymmddhhmmss.mmmmmmsutc, in any year; nothing for
 * any other text. A fraction of asterisks counts as 0. */
std::optional<std::string> timestampOf(std::string_view date);

/** Microseconds of a CIM interval, ddddddddhhmmss.mmmmmm:000; nothing for any other text. */
std::optional<std::string> microsecondsOf(std::string_view interval);

} // namespace metrics
#endif
