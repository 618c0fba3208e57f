#ifndef SNMP_MAPPING_READING_HPP
#define SNMP_MAPPING_READING_HPP

#include "agent/Catalogue.hpp"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace snmp {

/** The attribute of a group and a nominator; null for none. Faster than agent::findAttribute(). */
const agent::Attribute* attributeAt(long group, long nominator);

/** A value of an attribute. */
struct Item {
    const agent::Attribute* attribute;
    std::string_view text;
};

/** One instance of a group: a view of its items. Null properties have none, arrays several. */
class Instance {
public:
    Instance(long row, const Item* begin, const Item* end)
        : m_row(row)
        , m_begin(begin)
        , m_end(end) {}

    /** Number of the row in its reading. Another reading may number the rows in another way. */
    long row() const { return m_row; }
    const Item* begin() const { return m_begin; }
    const Item* end() const { return m_end; }
    /** The first value of an attribute. */
    std::optional<std::string_view> value(const agent::Attribute* attribute) const;

private:
    long m_row;
    const Item* m_begin;
    const Item* m_end;
};

/** Appends an item in the form that Reading reads. */
void appendItem(std::string& items, long row, long nominator, std::string_view text);

/** The instances of a group as they were read, in the order of their rows. Owns its texts. */
class Reading {
public:
    /** Reads items as appendItem() writes them; leaves out nominators that the group does not have. Throws
     * std::runtime_error if the bytes have another form. */
    Reading(long group, std::string items);

    long group() const { return m_group; }
    const std::vector<Instance>& instances() const { return m_instances; }
    const std::string& bytes() const { return *m_bytes; }

private:
    long m_group;
    std::unique_ptr<const std::string> m_bytes; // the texts keep their address in a move
    std::vector<Item> m_items;
    std::vector<Instance> m_instances;
};

} // namespace snmp
#endif
