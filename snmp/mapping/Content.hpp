#ifndef SNMP_MAPPING_CONTENT_HPP
#define SNMP_MAPPING_CONTENT_HPP

#include "snmp/mapping/Record.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The texts of objects, before their syntax makes values of them. */
namespace snmp {

/** The numbers of an attribute. */
struct Address {
    long group;
    long nominator;
};

/** A code or text of an attribute, and the content of the object. */
struct Code {
    std::string_view from;
    const char* to;
};
using Codes = std::vector<Code>;

/** What contents depend on beside the instances. Times are those of the master's sysUpTime. */
struct Context {
    std::uint32_t upTime = 0;
    /** When the values of the subject last changed. */
    std::uint32_t lastChange = 0;
    /** Now, in hundredths of a second from 1970-01-01 00:00:00 UTC. */
    std::int64_t now = 0;
};

struct Inputs {
    const Record& record;
    const std::vector<const agent::Attribute*>& sources;
    const Codes& codes;
    const Context& context;
};

/** Nothing if a value that it needs is null. */
using Content = std::optional<std::string> (*)(const Inputs&);

/** The first value of the first source that has one. */
std::optional<std::string> firstValue(const Inputs&);
/** All values of all sources, with a blank between each two. */
std::optional<std::string> joinedValues(const Inputs&);
/** What the first value with a code is translated to; the empty text if there is no such value. */
std::optional<std::string> translated(const Inputs&);
/** The sum of the sources. */
std::optional<std::string> sum(const Inputs&);
/** A speed in bit/s as Mbit/s, rounded. */
std::optional<std::string> megabits(const Inputs&);
/** An interval in hundredths of a second, at most 2^31 - 1. */
std::optional<std::string> hundredthsOfInterval(const Inputs&);
/** Hundredths of a second from the first source to the second. */
std::optional<std::string> hundredthsBetween(const Inputs&);
/** A date as a value of sysUpTime; 0 for a date before the master's start. */
std::optional<std::string> timeStamp(const Inputs&);
/** The first source if the second has another value; else the empty text. */
std::optional<std::string> alias(const Inputs&);
/** "3", a chassis, but for the group of the source. */
std::optional<std::string> physicalClass(const Inputs&);
/** Of a storage with block size, number of blocks and used blocks: the three in a unit in which all fit into
 * 32 bits with sign. */
std::optional<std::string> storageUnit(const Inputs&);
std::optional<std::string> storageSize(const Inputs&);
std::optional<std::string> storageUsed(const Inputs&);
/** Block size times number of blocks in kB. */
std::optional<std::string> kilobytes(const Inputs&);
std::optional<std::string> ordinal(const Inputs&);
std::optional<std::string> rowCount(const Inputs&);
std::optional<std::string> lastChange(const Inputs&);
std::optional<std::string> lastUpdate(const Inputs&);

} // namespace snmp
#endif
