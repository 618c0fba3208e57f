#ifndef AGENT_CONVERSION_HPP
#define AGENT_CONVERSION_HPP

#include <optional>
#include <string>

namespace owbctl {

/** A CIM time as a number. */
struct Conversion {
    /** The time that was given. */
    std::string text;
    /** Of the number: "s", "cs", "ms" or "us". */
    std::string unit;
    /** Nothing when the library cannot read the text. */
    std::optional<long> number;
    /** Why there is no number; empty when there is one. */
    std::string error;
};

/**
 * Seconds from 1970 to a CIM date, as OWB_calcTimeEpoch() counts them. The library gives 0 also for a text
 * that it cannot read; a 0 is believed when the same text with the year one higher gives the length of 1970.
 */
Conversion convertDate(const std::string& text);

/**
 * Length of a CIM interval in "s", "cs", "ms" or "us", as OWB_calcTimeInterval() counts it. A 0 is believed
 * only of a text in the form of an interval (DSP0004): 14 digits or asterisks, a point, 6 more, a colon and 3
 * digits.
 */
Conversion convertInterval(const std::string& text, const std::string& unit);

} // namespace owbctl
#endif
