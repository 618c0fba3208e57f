#ifndef METRICS_EXPOSITION_HPP
#define METRICS_EXPOSITION_HPP

#include "metrics/Family.hpp"

#include <string>
#include <vector>

/** The texts that Prometheus scrapes. */
namespace metrics {

enum class Format {
    /** The text format 0.0.4. */
    text,
    /** OpenMetrics 1.0.0: units, and a mark at the end. */
    openMetrics
};

constexpr Format formats[] = {Format::text, Format::openMetrics};

/** Value of the HTTP field Content-Type. */
const char* contentType(Format format);

/** The lines of families, in their order. A family without samples has none. A text consists of the lines of
 * all families, each once, and endOf(). */
std::string linesOf(const std::vector<Family>& families, Format format);

/** The last line of a text; empty for a format without one. */
const char* endOf(Format format);

} // namespace metrics
#endif
