#ifndef OWBCTL_FORMATS_GROUPTABLE_HPP
#define OWBCTL_FORMATS_GROUPTABLE_HPP

#include "agent/Group.hpp"
#include "agent/Sample.hpp"
#include "formats/Style.hpp"
#include "formats/Value.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace owbctl {

/** Numbers of rows and items of a group, and whether the read was incomplete: "(2 rows, 10 items)". */
std::string extent(const agent::Group& group);

/**
 * The rows of a group for people: a single row with one property on each line, several rows as a table. The
 * lines have at most `limit` columns; 0 means no limit.
 *
 * A table begins with what identifies a row, then come the row number, states and everything else. It leaves
 * out properties without a value and keys that are the same in every row, and shortens references to what
 * differs between rows. Style::isWide and Group::selected change this.
 */
std::string groupTable(const agent::Group& group, std::size_t limit, const Style& style = {});

/** The same for a sample; a mark() follows each value that changed. */
std::string sampleTable(const agent::Sample& sample, std::size_t limit, const Style& style = {});

/** A row that vanished, on one line: "row 3 vanished: Name eth1", with the values that identify it. */
std::string vanishedText(const agent::Row& row);

/** The mark of a value: "*" if it changed, "+2.5/s" for a counter with a known rate, empty if it did not
 * change. */
std::string mark(const agent::SampledProperty& sampled);

} // namespace owbctl
#endif
