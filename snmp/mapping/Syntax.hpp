#ifndef SNMP_MAPPING_SYNTAX_HPP
#define SNMP_MAPPING_SYNTAX_HPP

#include "snmp/Value.hpp"

#include <cstddef>
#include <optional>
#include <string_view>

namespace snmp {

/** Syntaxes of SMIv2 and of its textual conventions (RFC 2578, RFC 2579): how a text becomes a value. */
enum class Syntax {
    /** Saturates at both ends of 32 bits. */
    integer32,
    /** A number of up to 64 bits modulo 2^32. */
    counter32,
    /** Saturates at 2^32 - 1. */
    gauge32,
    counter64,
    /** Hundredths of a second modulo 2^32. */
    timeTicks,
    /** Cut to the object's size, before a character of UTF-8 that does not fit. */
    octets,
    /** Pairs of hexadecimal digits. Zeros alone, the address of an interface without one, are no octets. */
    hexOctets,
    /** IPv4 only. */
    ipAddress,
    objectId,
    /** A CIM date; an offset of asterisks is left out. */
    dateAndTime,
    /** "true" or "false". */
    truthValue
};

/** Octets of an object whose MIB names no smaller size. */
constexpr std::size_t defaultSize = 255;

/** Type of the values on the wire. */
Type typeOf(Syntax syntax);

/** The value of a text; nothing if the text does not have the form. `size` limits octets. */
std::optional<Value> encoded(Syntax syntax, std::string_view text, std::size_t size = defaultSize);

/** The longest part of a text that has at most `size` bytes and does not end within a character of UTF-8. */
std::string_view cutAtCharacter(std::string_view text, std::size_t size);

/** Whether all bytes form characters of UTF-8 (RFC 3629). */
bool isUtf8(std::string_view text);

} // namespace snmp
#endif
