#ifndef AGENT_CONVERSION_HPP
#define AGENT_CONVERSION_HPP

#include <optional>
#include <string>

/** CIM times as numbers. */
namespace agent {

/** Result of a conversion. */
struct Conversion {
    /** The CIM time. */
    std::string text;
    /** Unit of the number: "s", "cs", "ms" or "us". */
    std::string unit;
    /** Nothing if the library cannot read the text, or if the number does not fit. */
    std::optional<long> number;
    /** Why there is no number, for people; else empty. */
    std::string error;
};

/**
 * Seconds from 1970-01-01 00:00:00 UTC to a CIM date, by OWB_calcTimeEpoch(). The library returns 0 also for
 * a text that it cannot read. Therefore a 0 counts as valid only if the same text with the next year gives
 * the length of 1970.
 */
Conversion convertDate(const std::string& text);

/**
 * Length of a CIM interval in "s", "cs", "ms" or "us", by OWB_calcTimeInterval(). A 0 counts as valid only if
 * the text has the form of an interval (DSP0004): 14 digits or asterisks, a point, 6 more, a colon and 3
 * digits. The library's number has 32 bits and wraps; one that wrapped is an error.
 */
Conversion convertInterval(const std::string& text, const std::string& unit);

} // namespace agent
#endif
