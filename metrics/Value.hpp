#ifndef METRICS_VALUE_HPP
#define METRICS_VALUE_HPP

#include "agent/Group.hpp"

#include <optional>
#include <string>

/** The values of attributes as samples have them: decimal numbers in base units. */
namespace metrics {

/** Base unit of an attribute, as "bytes"; empty for none. */
std::string unitOf(const agent::Attribute& attribute);

/** The value of an attribute in a row; nothing if the row has none, or none that is a number. A row holds the
 * size of the blocks that it counts. */
std::optional<std::string> valueIn(const agent::Row& row, const agent::Attribute& attribute);

/** The value of an attribute in all rows together: the sum, or the latest of dates. Nothing if no row has
 * one. */
std::optional<std::string> valueIn(const std::vector<agent::Row>& rows, const agent::Attribute& attribute);

/** The value of an attribute in a row as text; the meaning of a code. Empty if the row has none. */
std::string textIn(const agent::Row& row, const agent::Attribute& attribute);

} // namespace metrics
#endif
