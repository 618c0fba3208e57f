#ifndef SNMP_VALUE_HPP
#define SNMP_VALUE_HPP

#include "snmp/Oid.hpp"

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace snmp {

/** Type of a value, with the number that it has on the wire (RFC 2741, 5.4). */
enum class Type : std::uint16_t {
    integer = 2,
    octetString = 4,
    null = 5,
    objectIdentifier = 6,
    ipAddress = 64,
    counter32 = 65,
    gauge32 = 66,
    timeTicks = 67,
    opaque = 68,
    counter64 = 70,
    noSuchObject = 128,
    noSuchInstance = 129,
    endOfMibView = 130
};

/** The value of an object, or the exception in its place. */
struct Value {
    using Content = std::variant<std::monostate, std::uint64_t, std::string, Oid>;

    Value() = default;
    Value(Type itsType, Content itsContent)
        : type(itsType)
        , content(std::move(itsContent)) {}
    // By assignment: the copy constructor of a variant of GCC 12 destroys a text that it failed to allocate.
    Value(const Value& other)
        : type(other.type) {
        content = other.content;
    }
    Value(Value&&) noexcept = default;
    Value& operator=(const Value&) = default;
    Value& operator=(Value&&) noexcept = default;
    ~Value() = default;

    Type type = Type::null;
    /**
     * A number for integer (sign-extended from 32 bits), counter32, gauge32, timeTicks and counter64; bytes
     * for octetString, ipAddress (4 bytes) and opaque; sub-identifiers for objectIdentifier; nothing for the
     * other types.
     */
    Content content;

    friend bool operator==(const Value& left, const Value& right) {
        return left.type == right.type && left.content == right.content;
    }
};

/** An object and its value. */
struct VarBind {
    Oid oid;
    Value value;
};

/** A range of a walk: the first object after `start`, or `start` itself if `include`, before `end`. An empty
 * `end` is no limit. */
struct SearchRange {
    Oid start;
    bool include = false;
    Oid end;
};

/** Errors of a reply, with the numbers of RFC 3416 and RFC 2741. */
enum class Error : std::uint16_t {
    none = 0,
    genErr = 5,
    noAccess = 6,
    wrongType = 7,
    wrongLength = 8,
    wrongEncoding = 9,
    wrongValue = 10,
    noCreation = 11,
    inconsistentValue = 12,
    resourceUnavailable = 13,
    commitFailed = 14,
    undoFailed = 15,
    notWritable = 17,
    inconsistentName = 18
};

} // namespace snmp
#endif
