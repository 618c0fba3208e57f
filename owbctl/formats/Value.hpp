#ifndef OWBCTL_FORMATS_VALUE_HPP
#define OWBCTL_FORMATS_VALUE_HPP

#include "agent/Group.hpp"
#include "formats/Style.hpp"

#include <string>
#include <vector>

/** Properties as tables show them. */
namespace owbctl {

/** Values as one printable text, separated by a comma and a blank; Table::absent for none. A text is in
 * quotes if it is empty, equals Table::absent, or has quotes around it: so "", "-" and no value differ. */
std::string cell(const std::vector<std::string>& values);

/** The name of an attribute with the unit of its values, as "Speed (bit/s)". */
std::string heading(const agent::Attribute& attribute, const Style& style);

/** The unit of an attribute as people write it, as "kB"; empty for none, and for counts of what the name
 * says. */
std::string unitOf(const agent::Attribute& attribute);

/** A property of a row as one printable text: codes with their names, readable dates and intervals, with
 * Style::isHuman readable sizes. Style::isRaw gives the texts as they
 * are, without quotes. */
std::string valueText(const agent::Property& property, const agent::Row& row, const Style& style);

/** A CIM date as "2026-01-02 03:04:05 +0100"; any other text as it is. */
std::string readableDate(const std::string& date);

/** A CIM interval as "[days-]hh:mm:ss.cc", in hundredths of a second; any other text as it is. */
std::string readableInterval(const std::string& interval);

/** Bytes in a unit of powers of 1024, as "1.5 GiB"; fewer than 10,000 as they are. */
std::string readableBytes(double bytes);

} // namespace owbctl
#endif
