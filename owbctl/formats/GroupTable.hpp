#ifndef OWBCTL_FORMATS_GROUPTABLE_HPP
#define OWBCTL_FORMATS_GROUPTABLE_HPP

#include "agent/Group.hpp"
#include "agent/Sample.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace owbctl {

/** Several values as one printable text; Table::absent for none. */
std::string cell(const std::vector<std::string>& values);

/** How many rows and items a group has, and whether that is all: "(2 rows, 10 items)". */
std::string extent(const Group& group);

/**
 * The rows of a group for people: a single row with a property a line, several as a table, which takes at
 * most `limit` columns when that is not 0.
 */
std::string groupTable(const Group& group, std::size_t limit);

/** The same of a sample; behind each value that changed stands its mark(). */
std::string sampleTable(const Sample& sample, std::size_t limit);

/** What is said of a value that changed: "*", or of a counter "+2.5/s". Empty for one that did not. */
std::string mark(const Sampled& sampled);

} // namespace owbctl
#endif
