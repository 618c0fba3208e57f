#ifndef AGENT_COUNTER_HPP
#define AGENT_COUNTER_HPP

#include <owb.h>

#include <optional>
#include <string>

namespace owbctl {

/** Whether a property counts events since some moment, as a Counter32 of RFC 2790 or RFC 4022 does: it only
 * grows, until it starts anew. */
bool isCounter(const ExtItem& description);

/**
 * By how much a counter has grown in a second, between two readings that lie `seconds` apart. Nothing when a
 * text is no number, when the counter has started anew, and when no time has passed.
 */
std::optional<double> ratePerSecond(const std::string& before, const std::string& now, double seconds);

} // namespace owbctl
#endif
