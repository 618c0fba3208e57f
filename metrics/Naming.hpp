#ifndef METRICS_NAMING_HPP
#define METRICS_NAMING_HPP

#include "agent/Catalogue.hpp"
#include "metrics/Family.hpp"

#include <string>
#include <string_view>
#include <vector>

/**
 * Which metrics the attributes of a group become, and their names.
 *
 * A name is `owb_<subject>_<quantity>_<unit>`: the subject is that of the group, the quantity is the property
 * in lower case, the unit a base unit. Tables in Naming.cpp have the subjects, and the attributes whose use
 * or quantity cannot be derived from the catalogue.
 */
namespace metrics {

/** What becomes of the rows of a group. */
enum class Shape {
    /** Each row has its own samples. */
    rows,
    /** Each row is one sample, whose labels have all values. */
    labels,
    /** There may be thousands of rows, which come and go. They are counted, and their values are summed up.
     */
    sums
};

/** A group that has metrics. */
struct Subject {
    long group;
    const char* name;
    Shape shape;
};

/** What becomes of an attribute. */
enum class Use {
    none,
    /** A label of all samples of its row. */
    key,
    /** A label of the row's sample of type Type::info. */
    label,
    /** A family. */
    value
};

/** The count of the rows of a group, by the codes of an attribute. */
struct Count {
    long group;
    /** -1: all rows together. */
    long nominator;
    const char* name;
    /** Of the codes; empty if there are none. */
    const char* label;
    const char* help;
};

/** A group that has metrics; null for any other. */
const Subject* subjectOf(long group);

/** The groups that have metrics, by ascending number. */
std::vector<long> measuredGroups();

/** The groups that have metrics among those that a text names, see agent::groupsNamed(). */
std::vector<long> measuredGroupsNamed(const std::string& text);

/** The counts of a group; none unless its shape is Shape::sums. */
std::vector<Count> countsOf(long group);

/** What becomes of an attribute whose group has metrics. */
Use useOf(const agent::Attribute& attribute);

/** Name of a label that holds an attribute. */
std::string labelOf(const agent::Attribute& attribute);

/** The family of an attribute whose use is Use::value, without samples. */
Family familyOf(const agent::Attribute& attribute);

/** The family of a group's labels, without samples. */
Family infoFamilyOf(const Subject& subject);

/** A name or the meaning of a code in lower case, with underscores between words: "InOctets" is "in_octets",
 * "SYN sent" is "syn_sent". */
std::string inSnakeCase(std::string_view name);

} // namespace metrics
#endif
