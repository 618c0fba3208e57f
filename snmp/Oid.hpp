#ifndef SNMP_OID_HPP
#define SNMP_OID_HPP

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace snmp {

/** An object identifier: its sub-identifiers. Comparison is lexicographic, which is the order of a walk (RFC
 * 3416). At most longestOid sub-identifiers are valid on the wire. */
using Oid = std::vector<std::uint32_t>;

/** Sub-identifiers of the longest object identifier (RFC 2578). */
constexpr std::size_t longestOid = 128;

/** 1.3.6.1.2.1, below which all objects of the standard MIBs are. */
extern const Oid mib2;

/** `first` followed by `rest`. */
Oid joined(const Oid& first, const Oid& rest);

/** Whether `oid` is `prefix` or below it. */
bool startsWith(const Oid& oid, const Oid& prefix);

/** "1.3.6.1", without a leading point; empty for no sub-identifiers. */
std::string text(const Oid& oid);

/** Parses the form that text() writes, with or without a leading point. Throws std::invalid_argument. */
Oid parseOid(std::string_view text);

} // namespace snmp
#endif
