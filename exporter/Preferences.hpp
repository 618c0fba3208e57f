#ifndef EXPORTER_PREFERENCES_HPP
#define EXPORTER_PREFERENCES_HPP

#include "metrics/Exposition.hpp"

#include <string_view>

/** What a client accepts, by the header fields of RFC 9110. Fields may have any content: what cannot be read
 * is ignored. */
namespace exporter {

/**
 * The format that a client prefers, by its field Accept. OpenMetrics only for a client that names it and does
 * not prefer text; text for any other, even if it accepts neither.
 */
metrics::Format preferredFormat(std::string_view accept);

/** Whether a client accepts gzip, by its field Accept-Encoding. */
bool acceptsGzip(std::string_view acceptEncoding);

} // namespace exporter
#endif
