#ifndef SNMP_MAPPING_RULES_HPP
#define SNMP_MAPPING_RULES_HPP

#include "snmp/mapping/Content.hpp"
#include "snmp/mapping/Syntax.hpp"

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

/**
 * The tables of the mapping. An object that the catalogue names needs no row: its syntax follows from the
 * kind of its attribute. Object identifiers are below mib-2.
 */
namespace snmp {

/** What is read at once and has one age. */
enum class Subject {
    system,
    interfaces,
    ip,
    icmp,
    tcp,
    connections,
    udp,
    host,
    storage,
    running,
    installed,
    entity
};
constexpr std::size_t subjectCount = 12;

enum class AgeClass { counters, tables, packages };

struct SubjectRule {
    Subject subject;
    AgeClass age;
    std::vector<long> groups;
    /** Time after which a reading counts as hanging. */
    std::chrono::seconds limit;
};

/** How a row is named. */
struct IndexRule {
    enum class Kind {
        /** 0: objects that exist once. */
        zero,
        /** 1 */
        one,
        /** Numbers of the nominators. */
        integers,
        /** Ordinal among the records, sorted by the text of the nominator. */
        ordinal,
        /** Pairs of IPv4 address and port. */
        ipAddresses,
        /** Pairs of InetAddress, with type and length, and port (RFC 4001). */
        inetAddresses
    };
    Kind kind = Kind::zero;
    /** Of the group of the record. */
    std::vector<long> nominators = {};
};

/** Leaves rows out by the value of a nominator of the record's group. */
struct FilterRule {
    long nominator;
    const char* value;
    /** Whether rows with the value are kept, or those without. */
    bool keepsEqual;
};

/** Which instance of another group belongs to a record. */
struct JoinRule {
    long group;
    /** Nominators with the same text in both groups. */
    long own;
    long other;
    /** Group whose rows relate the two by object paths; -1 if the texts are equal. Its nominator 1 is the
     * path of the record, and its nominator 0 the other's. The keys have the texts of `own` and `other`. */
    long association = -1;
    const char* ownKey = "";
    const char* otherKey = "";
};

/** A table, or objects that exist once. */
struct TableRule {
    /** Object identifier without the column. */
    const char* entry;
    Subject subject;
    /** Each row of these groups becomes a row of the table. */
    std::vector<long> groups;
    IndexRule index = {};
    std::vector<FilterRule> filters = {};
    std::optional<JoinRule> join = std::nullopt;
};

/** Whether an object can be read, and written. */
enum class Access { readOnly, readWrite, notAccessible };

/** An object whose mapping does not follow from the catalogue. */
struct ObjectRule {
    const char* oid;
    Syntax syntax;
    std::size_t size = defaultSize;
    /** Attributes by group and nominator; none for those of the catalogue. */
    std::vector<Address> sources = {};
    Content content = firstValue;
    Codes codes = {};
    /** Precedes the content. */
    const char* prefix = "";
    /** Content in place of a null value; null if the object is absent then. */
    const char* missing = nullptr;
    /** Content in place of an unknown code or a text that the syntax cannot hold; null likewise. */
    const char* otherwise = nullptr;
    Access access = Access::readOnly;
};

const std::vector<SubjectRule>& subjectRules();
const std::vector<TableRule>& tableRules();
const std::vector<ObjectRule>& objectRules();

/** The rule of an object that has no row: its attribute decides. */
ObjectRule derivedRule(const agent::Attribute& attribute);

} // namespace snmp
#endif
