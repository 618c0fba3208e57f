#ifndef SNMP_MAPPING_RECORD_HPP
#define SNMP_MAPPING_RECORD_HPP

#include "snmp/mapping/Reading.hpp"

#include <cstddef>

namespace snmp {

/** What a row of a table is made of. The instances belong to readings, which must outlive it. */
struct Record {
    long group;
    const Instance* base;
    /** The instance of another group that belongs to the same object; null if there is none. */
    const Instance* joined;
    /** Number among the records of the table, from 1, and how many there are. */
    std::size_t ordinal;
    std::size_t count;

    /** The first value of an attribute. */
    std::optional<std::string_view> value(const agent::Attribute* attribute) const {
        const std::optional<std::string_view> own = base->value(attribute);
        return own || joined == nullptr ? own : joined->value(attribute);
    }
};

} // namespace snmp
#endif
