#ifndef AGENT_CATALOGUE_HPP
#define AGENT_CATALOGUE_HPP

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/**
 * What each group and each nominator means.
 *
 * Plain constant data without dependency on the library: groups, classes, nominators and properties are those
 * of ExtGroupCimClass and ExtItemList, which a test asserts. The names of CIM properties are compared without
 * regard to case, as the library does. All functions are safe from any thread; nothing that they return is
 * ever freed.
 */
namespace agent {

/** Kind of the values of an attribute. */
enum class Kind {
    /** Key property of the class, a text. It identifies the instance and never changes. */
    key,
    /** Identifies the row in a standard MIB table, alone or with others, but is no key of the class. */
    index,
    /** Identifies another instance, by its object path or by its index. Paths are the keys of their class. */
    reference,
    /** A code, see Attribute::values. */
    state,
    /** Number of events. It only grows, until it restarts from 0. */
    counter,
    /** Any other number: a quantity that rises and falls, a limit, a setting. */
    gauge,
    /** Amount of memory, storage or data. */
    size,
    /** CIM date: yyyymmddhhmmss.mmmmmmsutc. */
    date,
    /** CIM interval: ddddddddhhmmss.mmmmmm:000. */
    interval,
    /** "true" or "false". */
    flag,
    /** Any other text. */
    text
};

/** The word of a kind as documents and programs show it: "key", "index" and so on. */
const char* wordOf(Kind kind);

/** A code and its meaning. */
struct ValueName {
    long value;
    const char* name;
};

/** The codes of an attribute, by ascending value. A view of static data. */
class ValueNames {
public:
    constexpr ValueNames() = default;
    template <std::size_t count>
    constexpr ValueNames(const ValueName (&names)[count]) // implicit: the table converts its arrays
        : m_begin(names)
        , m_end(names + count) {}

    constexpr const ValueName* begin() const { return m_begin; }
    constexpr const ValueName* end() const { return m_end; }
    constexpr bool empty() const { return m_begin == m_end; }

    /** The name of a value as an item holds it, in decimal; null when it has none. */
    const char* find(std::string_view value) const;

private:
    const ValueName* m_begin = nullptr;
    const ValueName* m_end = nullptr;
};

/** An object of a standard MIB. */
struct MibObject {
    /** Its descriptor, as "ifInOctets"; empty for none. */
    const char* name = "";
    /** Its object identifier below mib-2 (1.3.6.1.2.1), as "2.2.1.10"; no instance is appended. */
    const char* oid = "";
};

/** One nominator of a group. */
struct Attribute {
    long group;
    long nominator;
    /** CIM property of the group's class, or a pseudo-name that begins with "_". */
    const char* property;
    Kind kind;
    /** Unit as the CIM qualifier Units has it (DSP0004), as "Bytes"; empty for what has none. */
    const char* unit;
    /** Standard object with the same content. Values may need a conversion, and an object of 32 bits holds a
     * counter modulo 2^32. */
    MibObject mib;
    /** One sentence for people, with its period. */
    const char* description;
    /** Of a state: what its values mean. May be incomplete; empty for a sum of flags. */
    ValueNames values = {};
    /** Whether the site decides the value and may change it. */
    bool isWritable = false;
    /** Whether people identify a row by it, alone or with others, as by the name of an interface. No
     * attribute does in groups that have one row. */
    bool isIdentifying = false;

    /** Whether a write of the library can change the value: it is writable, and the write names the instance.
     */
    bool isSettable() const;
};

/** A group: class, name and subject. */
struct GroupClass {
    /** The CIM class. Several groups may share one. */
    const char* name;
    /** Name of the group for people: lower-case words with hyphens, unique. */
    const char* shortName;
    /** What the instances are, for people, without a period. */
    const char* subject;
    /** Key properties by which a write of the library names the instance; empty when a write names none.
     * Object managers that need keys reject such a write. */
    std::vector<std::string> writeKeys;
};

constexpr std::size_t attributeCount = 216;
constexpr long highestGroup = 30;

/** All attributes, in the order of ExtItemList. */
extern const std::array<Attribute, attributeCount> attributes;

/** The attributes of a group, in the order of ExtItemList; none for an unknown group. */
std::vector<const Attribute*> attributesOf(long group);

/** The same, by ascending nominator. */
std::vector<const Attribute*> attributesByNominator(long group);

/** An attribute of a group by the name of its property or by its nominator in decimal; null for none. */
const Attribute* findAttribute(long group, std::string_view nameOrNominator);

/** The first attribute of a class and a property; null for none. Groups that share a class and a property
 * describe it alike. */
const Attribute* findAttribute(std::string_view className, std::string_view property);

/** Every group, from 0 to highestGroup. */
std::vector<long> everyGroup();

/** @param group from 0 to highestGroup; anything else throws std::out_of_range */
const GroupClass& classOf(long group);

/** The group of a GroupClass::shortName, in any case of letters; nothing for an unknown name. */
std::optional<long> groupOfName(std::string_view shortName);

/** The groups of a class, by ascending number; none for an unknown class. */
std::vector<long> groupsOfClass(std::string_view className);

} // namespace agent
#endif
